pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The context menu of a tile. What it offers follows the selection at its opening. */
PanelMenu {
    id: root

    property AppItemView tile: null

    property string path
    property string selection
    property bool isFavorite: false
    readonly property bool inHidden: selection === "hidden"
    readonly property bool inFolder: selection.startsWith("folder:")

    function popUpFor(opened) {
        tile = opened;
        path = opened.path;
        selection = Library.selection;
        isFavorite = Library.isFavorite(path);
        for (let i = 0; i < count; ++i) {
            if (menuAt(i) === folderMenu)
                itemAt(i).visible = !inHidden && !inFolder;
        }
        folders.model = inHidden || inFolder ? [] : Library.folders();
    }

    PanelMenuItem {
        text: qsTr("Launch")
        onTriggered: root.tile.launch()
    }
    PanelMenuSeparator {}
    PanelMenuItem {
        text: root.isFavorite ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")
        onTriggered: Library.toggleFavorite(root.path)
    }
    PanelMenuSeparator {}
    PanelMenuItem {
        text: root.inHidden ? qsTr("Unhide App Globally") : qsTr("Hide App Globally")
        destructive: !root.inHidden
        onTriggered: {
            if (root.inHidden)
                Library.unhideApp(root.path);
            else
                Library.hideApp(root.path);
        }
    }
    PanelMenuSeparator {
        visible: !root.inHidden
    }
    PanelMenuItem {
        text: qsTr("Remove from Folder")
        destructive: true
        visible: root.inFolder
        onTriggered: Library.removeAppFromFolder(root.path, root.selection.slice(7))
    }

    PanelMenu {
        id: folderMenu
        title: qsTr("Add to Folder")
    }
    Instantiator {
        id: folders
        model: []
        delegate: PanelMenuItem {
            id: folder
            required property var modelData
            text: folder.modelData.name
            onTriggered: Library.addAppToFolder(root.path, folder.modelData.id)
        }
        onObjectAdded: (index, object) => folderMenu.insertItem(index, object)
        onObjectRemoved: (index, object) => folderMenu.removeItem(object)
    }
    PanelMenuSeparator {}
    PanelMenuItem {
        text: qsTr("Uninstall App…")
        destructive: true
        // In the next turn, when the menu has given the keyboard back.
        onTriggered: Qt.callLater(path => ViewModel.appToUninstall = path, root.path) // qmllint disable type
    }
}
