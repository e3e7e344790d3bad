pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The tools of the list that is shown, and the window's buttons. */
Row {
    id: root

    required property Window window

    function toggleMaximized() {
        windowButtons.toggleMaximized();
    }

    spacing: 16

    ToolbarButton {
        id: sortButton
        visible: Library.isAllApps
        anchors.verticalCenter: parent.verticalCenter
        symbol: "arrow.up.arrow.down"
        label: qsTr("Sort")
        opensPopup: true
        open: sortMenu.open
        onClicked: sortMenu.popUpBelow(sortButton)

        MenuHost {
            id: sortMenu
            source: "SortMenu.qml"
        }
    }
    ToolbarButton {
        visible: Library.selectedFolder !== ""
        anchors.verticalCenter: parent.verticalCenter
        symbol: "plus.circle"
        label: qsTr("Add Apps")
        onClicked: Library.openPicker(Library.selectedFolder)
    }
    WindowButtons {
        id: windowButtons
        anchors.verticalCenter: parent.verticalCenter
        window: root.window
    }
}
