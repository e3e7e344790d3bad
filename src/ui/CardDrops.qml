pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Drags over the unified grid: applications go into a folder, cards to another place. Near the upper and lower edge the
    cards scroll. */
DropArea {
    id: root

    required property GridView grid
    readonly property real edge: 48

    /*! Identifier of the cell that would take what is dragged; empty for none. */
    property string dropTargetID

    function cellAt(x: real, y: real): UnifiedCell {
        const cell = grid.itemAt(x + grid.contentX, y + grid.contentY) as UnifiedCell;
        return cell && cell.contains(mapToItem(cell, x, y)) ? cell : null;
    }
    function isCard(text: string): bool {
        return text !== "" && !GridDrops.takesText(text);
    }
    function takes(cell: UnifiedCell, drag: var): bool {
        if (!cell || !cell.isCard)
            return false;
        return drag.hasUrls ? cell.folderId !== "" : isCard(drag.text);
    }
    function leave() {
        dropTargetID = "";
        scroll.speed = 0;
    }

    onEntered: drag => drag.accepted = drag.hasUrls || isCard(drag.text)
    onPositionChanged: drag => {
        const cell = cellAt(drag.x, drag.y);
        dropTargetID = takes(cell, drag) ? cell.identifier : "";
        scroll.speed = drag.y < edge ? (drag.y - edge) / edge : drag.y > height - edge ? (drag.y - height + edge) / edge : 0;
    }
    onExited: leave()
    onDropped: drop => {
        const cell = cellAt(drop.x, drop.y);
        leave();
        if (!takes(cell, drop))
            drop.accepted = false;
        else if (drop.hasUrls)
            drop.accepted = GridDrops.dropOnFolderCard(drop.urls, cell.folderId);
        else
            drop.accepted = GridDrops.dropOnCell(drop.text, cell.identifier);
    }

    FrameAnimation {
        id: scroll
        /*! -1 at the upper edge to 1 at the lower one. */
        property real speed: 0
        running: speed !== 0
        onTriggered: {
            const first = root.grid.originY - root.grid.topMargin;
            const last = Math.max(first, root.grid.originY + root.grid.contentHeight + root.grid.bottomMargin - root.grid.height);
            root.grid.contentY = Math.max(first, Math.min(last, root.grid.contentY + 900 * speed * Math.min(frameTime, 0.05)));
        }
    }
}
