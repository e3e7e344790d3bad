pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Below the folders: makes one more. */
SidebarRow {
    id: root

    label: qsTr("New Folder")
    symbol: "plus.circle"
    ink: Theme.secondary
    text: Theme.secondary
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.focused: activeFocus
    Keys.onReturnPressed: picked()
    Keys.onEnterPressed: picked()
    Keys.onSpacePressed: picked()

    FocusRing {
        cornerRadius: 8
        anchors.leftMargin: root.margin - thickness
        anchors.rightMargin: root.margin - thickness
    }
}
