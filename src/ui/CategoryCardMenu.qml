pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The context menu of a category's card. */
PanelMenu {
    id: root

    property string category
    /*! As `Library.folders` gives them. */
    property var folders: []

    PanelMenuItem {
        text: qsTr("Create Folder from Category")
        symbol: "folder.badge.plus"
        onTriggered: Library.createFolderFromCategory(root.category)
    }
    PanelMenuSeparator {}
    PanelMenu {
        id: folderMenu
        title: qsTr("Add All to Existing Folder")
    }
    Instantiator {
        model: root.folders
        delegate: PanelMenuItem {
            id: folder
            required property var modelData
            text: folder.modelData.name
            onTriggered: Library.addCategoryToFolder(root.category, folder.modelData.id)
        }
        onObjectAdded: (index, object) => folderMenu.insertItem(index, object)
        onObjectRemoved: (index, object) => folderMenu.removeItem(object)
    }
}
