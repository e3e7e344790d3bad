pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The look of a workspace. */
Customizer {
    prompt: qsTr("Workspace Name")
    icons: IconChoices.workspaceIcons
}
