pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The context menu of a folder in the sidebar. */
PanelMenu {
    id: root

    property SidebarSheets sheets
    property FolderRow row
    property string folder
    property bool isPinned: false

    function popUpFor(opened: FolderRow, x: real, y: real) {
        row = opened;
        folder = opened.folderId;
        isPinned = opened.isPinned;
        popup(opened, x, y);
    }

    PanelMenuItem {
        text: root.isPinned ? qsTr("Unpin Folder") : qsTr("Pin Folder")
        onTriggered: Library.togglePinFolder(root.folder)
    }
    PanelMenuItem {
        text: qsTr("Rename")
        onTriggered: root.sheets.editFolder(root.folder)
    }
    PanelMenuItem {
        text: qsTr("Change Color...")
        onTriggered: root.sheets.pickColor(root.row)
    }
    PanelMenuItem {
        text: qsTr("Change Icon...")
        onTriggered: root.sheets.pickIcon(root.row)
    }
    PanelMenuSeparator {}
    PanelMenuItem {
        text: qsTr("Delete")
        destructive: true
        onTriggered: root.sheets.deleteFolder(root.folder)
    }
}
