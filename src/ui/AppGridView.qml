pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Everything in the window: the header with the search field, and below it the applications. */
Item {
    id: root

    required property Window hostWindow
    readonly property bool isLoading: ViewModel.appFinder.isScanning && ViewModel.appFinder.isEmpty

    readonly property bool searchFocusTrigger: ViewModel.searchFocusTrigger
    onSearchFocusTriggerChanged: header.searchField.requestFocus()

    HeaderBar {
        id: header
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
        }
        window: root.hostWindow
        endWidth: windowButtons.width + 16
        onMaximizeToggled: windowButtons.toggleMaximized()
        Component.onCompleted: searchField.requestFocus()
    }

    TileGrid {
        id: tileGrid
        anchors {
            left: parent.left
            right: parent.right
            top: header.bottom
            bottom: parent.bottom
        }
        visible: !root.isLoading
        hostWindow: root.hostWindow
        onEscapedUp: header.searchField.requestFocus()
    }

    // After the grid, so that Tab goes from the search field to the tiles.
    WindowButtons {
        id: windowButtons
        anchors {
            right: parent.right
            rightMargin: 16
            verticalCenter: header.verticalCenter
        }
        window: root.hostWindow
    }

    Presence {
        anchors {
            left: parent.left
            right: parent.right
            top: header.bottom
            bottom: parent.bottom
        }
        present: root.isLoading
        source: "ModernLoadingView.qml"
    }

    Connections {
        target: Notifications
        function onQuillbayHotkeyTriggered() {
            header.searchField.requestFocus();
        }
        function onQuillbaySearchFocusRequested() {
            header.searchField.requestFocus();
        }
    }
    Connections {
        target: root.hostWindow
        function onActiveChanged() {
            if (root.hostWindow.active)
                header.searchField.requestFocus();
        }
    }
}
