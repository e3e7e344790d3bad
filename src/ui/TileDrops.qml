pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Drags over the tiles of a folder: the tile under the pointer is the target, and where the pointer rests the others make
    room; near the upper and lower edge the tiles scroll. */
DropArea {
    id: root

    required property GridView grid
    /*! The folder whose members the tiles are; empty for none. */
    required property string folder
    readonly property int restTime: 150
    readonly property real edge: 48

    /*! Path of the tile that is the target; empty for none. */
    property string target

    /*! The tile at a place of this area; none between the tiles. */
    function pathAt(x, y) {
        const tile = grid.itemAt(x + grid.contentX, y + grid.contentY) as AppItemView;
        if (!tile)
            return "";
        const inside = mapToItem(tile, x, y);
        return inside.x <= tile.width && inside.y <= tile.height ? tile.path : "";
    }
    function aim(path) {
        if (path === target)
            return;
        rest.stop();
        target = path;
        if (path !== "" && GridDrops.movesOnHover(path, folder))
            rest.restart();
    }

    keys: ["text/uri-list"]
    onPositionChanged: drag => {
        aim(pathAt(drag.x, drag.y));
        scroll.speed = drag.y < edge ? (drag.y - edge) / edge : drag.y > height - edge ? (drag.y - height + edge) / edge : 0;
    }
    onExited: {
        aim("");
        scroll.speed = 0;
    }
    onDropped: drop => {
        const path = pathAt(drop.x, drop.y);
        aim("");
        scroll.speed = 0;
        drop.accepted = path !== "" && GridDrops.dropOnTile(drop.urls, path, folder);
    }

    Timer {
        id: rest
        interval: root.restTime
        onTriggered: GridDrops.hoverOnTile(root.target, root.folder)
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
            root.aim(root.pathAt(root.drag.x, root.drag.y));
        }
    }
}
