pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The context menu of a folder's card. In the hidden list all it offers is the way back. */
PanelMenu {
    id: root

    property CategoryCardView card: null
    property string folderId
    property bool inHidden: false

    PanelMenuItem {
        text: qsTr("Rename")
        symbol: "pencil"
        visible: !root.inHidden
        onTriggered: Qt.callLater(root.card.beginRename) // qmllint disable type
    }
    PanelMenuItem {
        text: qsTr("Delete")
        symbol: "trash"
        destructive: true
        visible: !root.inHidden
        onTriggered: Library.deleteFolder(root.folderId)
    }
    PanelMenuItem {
        text: qsTr("Hide Folder Globally")
        symbol: "eye.slash"
        destructive: true
        visible: !root.inHidden
        onTriggered: Library.hideFolder(root.folderId)
    }
    PanelMenuSeparator {
        visible: !root.inHidden
    }
    PanelMenuItem {
        text: qsTr("Add Apps to this folder")
        symbol: "plus.circle"
        visible: !root.inHidden
        onTriggered: Qt.callLater(Library.openPicker, root.folderId) // qmllint disable type
    }
    PanelMenuItem {
        text: qsTr("Unhide Folder Globally")
        symbol: "eye"
        visible: root.inHidden
        onTriggered: Library.unhideFolder(root.folderId)
    }
}
