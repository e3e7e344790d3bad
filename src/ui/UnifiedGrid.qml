pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! All folders and categories as cards. Tab reaches it, arrows move inside it, Return or Space expands a card, F2 renames a
    folder. */
GridView {
    id: root

    required property Window hostWindow

    signal expandFolder(string id)
    signal expandCategory(string name)
    /*! The user went up from the first row. */
    signal escapedUp

    readonly property CardColumns columns: CardColumns {
        width: root.width
    }
    readonly property int rowSpacing: 32

    function expand(cell: UnifiedCell) {
        if (cell.folderId !== "")
            expandFolder(cell.folderId);
        else
            expandCategory(cell.name);
    }
    function popUpForCurrent() {
        const cell = currentItem as UnifiedCell;
        if (cell && cell.isCard)
            menu.popUpFor(cell.card, cell.card.width / 2, cell.card.height / 2);
    }
    function activateCurrent() {
        const cell = currentItem as UnifiedCell;
        if (cell)
            cell.activate();
    }

    topMargin: 32
    bottomMargin: 32 - rowSpacing
    leftMargin: columns.leading
    // Room for exactly the columns and the spacing behind the last one.
    rightMargin: width - columns.leading - columns.count * cellWidth
    cellWidth: columns.columnWidth + columns.spacing
    cellHeight: 190 + rowSpacing

    model: Cards
    clip: true
    reuseItems: true
    cacheBuffer: 2 * cellHeight
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    keyNavigationEnabled: true
    currentIndex: -1

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Folders and categories")
    Accessible.focusable: true

    onActiveFocusChanged: {
        if (activeFocus && currentIndex < 0 && count > 0)
            currentIndex = 0;
    }
    onContentYChanged: {
        if (!DragSource.active)
            wheelLatch.restart();
    }

    Keys.onReturnPressed: activateCurrent()
    Keys.onEnterPressed: activateCurrent()
    Keys.onSpacePressed: activateCurrent()
    Keys.onMenuPressed: popUpForCurrent()
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Home)
            currentIndex = 0;
        else if (event.key === Qt.Key_End)
            currentIndex = count - 1;
        else if (event.key === Qt.Key_F2 && currentItem)
            (currentItem as UnifiedCell).card.beginRename();
        else if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
            popUpForCurrent();
        else
            event.accepted = false;
    }
    Keys.onUpPressed: event => {
        if (currentIndex < columns.count) {
            currentIndex = -1;
            escapedUp();
        } else {
            event.accepted = false;
        }
    }

    delegate: UnifiedCell {
        id: cell
        width: root.columns.columnWidth
        height: 190
        z: targeted ? 1 : 0
        focused: GridView.isCurrentItem && root.activeFocus && !card.isEditingName
        targeted: identifier !== "" && drops.dropTargetID === identifier
        wheelPasses: wheelLatch.running
        card.onExpanded: root.expand(cell)
        card.onContextMenuRequested: (x, y) => menu.popUpFor(card, x, y)
        card.onNameEdited: root.forceActiveFocus()
        card.onIsHoveringChanged: {
            if (card.isHovering) {
                help.text = Qt.binding(() => cell.card.help);
                help.target = card;
            } else if (help.target === card) {
                help.target = null;
            }
        }
        GridView.onPooled: {
            visible = false;
            card.reset();
        }
        GridView.onReused: {
            visible = true;
            opacity = 1;
            scale = 1;
        }
    }

    add: Transition {
        CellAppearance {
            from: 0
            to: 1
        }
        SpringMotion {
            property: "scale"
            from: 0.95
            to: 1
        }
    }
    remove: Transition {
        CellAppearance {
            to: 0
        }
        SpringMotion {
            property: "scale"
            to: 0.95
        }
    }
    displaced: Transition {
        SpringMotion {
            properties: "x,y"
            preset: SpringMotion.Move
        }
        // Of one that was still coming.
        CellAppearance {
            to: 1
        }
        SpringMotion {
            property: "scale"
            to: 1
        }
    }
    move: displaced

    component CellAppearance: SpringMotion {
        property: "opacity"
    }

    CardDrops {
        id: drops
        parent: root
        anchors.fill: parent
        grid: root
    }
    Timer {
        id: wheelLatch
        interval: 300
    }
    HelpText {
        id: help
        parent: root
        z: 1
    }
    CardMenuHost {
        id: menu
    }
    WheelScroll {
        view: root
    }
}
