pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Makes a folder or edits one. Both share the icon and the colour: a new folder begins with those of the folder that was
    edited last, unless one was begun, made or not, since. The name is taken as it stands; without one, nothing happens. */
CustomizerSheet {
    id: root

    /*! Empty for a new one. */
    property string folder

    function openNew() {
        folder = "";
        inputs.name = "";
        open();
    }
    /*! `entry` is what the library says of the folder. */
    function openFor(edited: string, entry: var) {
        if (!("name" in entry))
            return;
        folder = edited;
        inputs.name = entry.name;
        inputs.selectedIcon = entry.icon;
        inputs.selectedColor = entry.color;
        open();
    }

    title: folder === "" ? qsTr("Create Folder") : qsTr("Edit Folder")
    confirmText: folder === "" ? qsTr("Create") : qsTr("Save")
    onAboutToShow: inputs.focusName()
    onAccepted: {
        if (inputs.name === "")
            return;
        if (folder === "")
            Library.createFolder(inputs.name, inputs.selectedIcon, inputs.selectedColor);
        else
            Library.editFolder(folder, inputs.name, inputs.selectedIcon, inputs.selectedColor);
        close();
    }
    onClosed: {
        if (folder !== "")
            return;
        inputs.selectedIcon = "folder";
        inputs.selectedColor = Theme.defaultColor;
    }

    FolderCustomizerView {
        id: inputs
        width: parent.width
        selectedIcon: "folder"
        selectedColor: Theme.defaultColor
    }
}
