pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The look of a folder. */
Customizer {
    prompt: qsTr("Folder Name")
    icons: IconChoices.folderIcons
}
