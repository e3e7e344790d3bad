pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A folder in the sidebar. An application dropped on it goes into the folder. */
SidebarRow {
    id: root

    required property int index
    required property string folderId
    required property string name
    required property string icon
    required property string color
    required property bool isPinned
    required property int depth
    /*! It is on its way to another place in the list. */
    property bool moving: false

    label: name
    symbol: icon
    ink: ColorHex.color(color)
    indent: depth * 12
    trailing: isPinned ? 18 : 0
    targeted: drop.containsDrag
    // A row that waits for its next folder is not there for anyone, screen readers included.
    visible: index >= 0
    opacity: moving ? 0.4 : 1
    Accessible.description: isPinned ? qsTr("Pinned") : ""

    Symbol {
        anchors {
            right: parent.right
            rightMargin: 2 * root.margin
            verticalCenter: parent.verticalCenter
        }
        name: root.isPinned ? "pin.fill" : ""
        size: Theme.captionSize
        color: root.targeted ? "white" : Theme.secondary
    }
    DropArea {
        id: drop
        anchors.fill: parent
        onEntered: drag => {
            drag.accepted = drag.hasUrls || GridDrops.takesText(drag.text);
        }
        onDropped: drop => {
            drop.accepted = GridDrops.dropTextOnFolder(drop.hasUrls ? drop.urls[0].toString() : drop.text, root.folderId);
        }
    }
}
