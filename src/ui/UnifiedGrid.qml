pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! All folders and categories as cards. Tab reaches it, arrows move inside it, Return or Space expands a card, F2 renames a
    folder. */
FocusScope {
    id: root


    signal expandFolder(string id)
    signal expandCategory(string name)
    /*! The user went up from the first row. */
    signal escapedUp

    readonly property CardColumns columns: CardColumns {}
    readonly property int cardHeight: 190
    readonly property int rowSpacing: 32
    /*! The cards only pass below the pointer. */
    property bool isPassing: false

    function expand(cell: UnifiedCell) {
        if (cell.folderId !== "")
            expandFolder(cell.folderId);
        else
            expandCategory(cell.name);
    }

    // The view counts its columns when its own width changes, and at no other time: the rest must be right by then.
    onWidthChanged: {
        columns.width = width;
        grid.width = width;
    }

    GridView {
        id: grid

        readonly property UnifiedCell cell: currentItem as UnifiedCell

        height: parent.height
        topMargin: 32
        bottomMargin: 32 - root.rowSpacing
        leftMargin: root.columns.leading
        // Room for exactly the columns and the spacing behind the last one.
        rightMargin: root.width - leftMargin - root.columns.count * cellWidth
        cellWidth: root.columns.columnWidth + root.columns.spacing
        cellHeight: root.cardHeight + root.rowSpacing

        model: Cards
        focus: true
        clip: true
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
            if (DragSource.active)
                return;
            root.isPassing = true;
            wheelLatch.restart();
        }

        Keys.onReturnPressed: cell?.activate()
        Keys.onEnterPressed: cell?.activate()
        Keys.onSpacePressed: cell?.activate()
        Keys.onMenuPressed: cell?.popUp()
        Keys.onPressed: event => {
            event.accepted = true;
            if (event.key === Qt.Key_Home)
                currentIndex = 0;
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1;
            else if (event.key === Qt.Key_F2)
                cell?.beginRename();
            else if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
                cell?.popUp();
            else
                event.accepted = false;
        }
        Keys.onUpPressed: event => {
            if (currentIndex < root.columns.count) {
                currentIndex = -1;
                root.escapedUp();
            } else {
                event.accepted = false;
            }
        }

        delegate: UnifiedCell {
            id: cell
            width: root.columns.columnWidth
            height: root.cardHeight
            z: targeted ? 1 : 0
            focused: GridView.isCurrentItem && GridView.view.activeFocus && !isEditingName
            targeted: identifier !== "" && drops.dropTargetID === identifier
            wheelPasses: root.isPassing
            onExpanded: root.expand(cell)
            onContextMenuRequested: (card, x, y) => menu.popUpFor(card, x, y)
            onNameEdited: GridView.view.forceActiveFocus()
            onIsHoveringChanged: {
                if (isHovering) {
                    help.text = Qt.binding(() => cell.help);
                    help.target = this;
                } else if (help.target === this) {
                    help.target = null;
                }
            }
        }

        add: Transition {
            SpringMotion {
                property: "opacity"
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
            SpringMotion {
                property: "opacity"
                to: 0
            }
            SpringMotion {
                property: "scale"
                to: 0.95
            }
        }
        move: Transition {
            CellMotion {}
        }
        displaced: Transition {
            CellMotion {}
            // Of one that was still coming.
            SpringMotion {
                properties: "opacity,scale"
                to: 1
            }
        }

        WheelScroll {
            view: grid
        }
    }
    component CellMotion: SpringMotion {
        properties: "x,y"
        preset: SpringMotion.Move
    }

    CardDrops {
        id: drops
        anchors.fill: grid
        grid: grid
    }
    Timer {
        id: wheelLatch
        interval: 300
        onTriggered: root.isPassing = false
    }
    HelpText {
        id: help
        parent: root
        z: 1
    }
    CardMenuHost {
        id: menu
    }
}
