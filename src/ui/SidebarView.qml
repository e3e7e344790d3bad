pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The left column of the main window: what the grid can show, and below it, not scrolling, the workspaces. */
Item {
    id: root

    /*! Left free at the top. */
    property real topInset: 12
    /*! The keyboard is in the list: going through it is no reason to take the keyboard elsewhere. */
    readonly property bool listFocused: list.activeFocus

    implicitWidth: 240

    VisualEffectView {
        anchors.fill: parent
        material: "sidebar"
    }
    SidebarList {
        id: list
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            topMargin: root.topInset
            bottom: switcher.top
        }
        markedRow: folderMenu.menu && folderMenu.menu.visible ? folderMenu.menu.row : null
        onNewFolderRequested: sheets.createFolder()
        onMenuRequested: (row, x, y) => {
            folderMenu.active = true;
            folderMenu.menu.popUpFor(row, x, y);
        }
        onScrolled: sheets.closePopover()
    }
    WorkspaceSwitcher {
        id: switcher
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
        }
        onMenuRequested: {
            workspaceMenu.active = true;
            workspaceMenu.menu.popUpAbove(switcher);
        }
    }

    SidebarSheets {
        id: sheets
    }
    Loader {
        id: folderMenu
        readonly property var menu: item
        active: false
        source: "FolderMenu.qml"
        onLoaded: menu.sheets = sheets
    }
    Loader {
        id: workspaceMenu
        readonly property var menu: item
        active: false
        source: "WorkspaceMenu.qml"
        onLoaded: menu.sheets = sheets
    }
}
