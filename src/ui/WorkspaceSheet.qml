pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Makes a workspace or edits one. The name is taken as it stands; without one, nothing happens. */
CustomizerSheet {
    id: root

    /*! Empty for a new one. */
    property string workspace

    function openNew() {
        openFor("", "", "briefcase.fill", Theme.defaultColor);
    }
    function openFor(edited: string, name: string, icon: string, color: string) {
        workspace = edited;
        inputs.name = name;
        inputs.selectedIcon = icon;
        inputs.selectedColor = color;
        open();
    }

    title: workspace === "" ? qsTr("Create Workspace") : qsTr("Edit Workspace")
    confirmText: workspace === "" ? qsTr("Create") : qsTr("Save")
    onAboutToShow: inputs.focusName()
    onAccepted: {
        if (inputs.name === "")
            return;
        if (workspace === "")
            Library.createWorkspace(inputs.name, inputs.selectedIcon, inputs.selectedColor);
        else
            Library.updateWorkspace(workspace, inputs.name, inputs.selectedIcon, inputs.selectedColor);
        close();
    }

    WorkspaceCustomizerView {
        id: inputs
        width: parent.width
    }
}
