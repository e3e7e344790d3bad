pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The window's own header: the way back from a category and the search field in the middle. Dragging it moves the window,
    a double click asks for it to be maximised. */
Item {
    id: root

    required property Window window
    property alias searchField: searchField
    /*! How much of the header's end is taken. */
    required property real endWidth

    readonly property string selection: Library.selection
    readonly property real from: leading.x + leading.width + 8
    readonly property real to: width - endWidth - 12

    signal maximizeToggled

    implicitHeight: 64

    WindowDragZone {
        anchors.fill: parent
        window: root.window
        onDoubleClicked: root.maximizeToggled()
    }

    Row {
        id: leading
        anchors {
            left: parent.left
            leftMargin: 8
            verticalCenter: parent.verticalCenter
        }
        ToolbarButton {
            visible: root.selection.startsWith("category:")
            symbol: "chevron.left"
            label: qsTr("All Categories")
            showsText: true
            ink: Theme.blue
            onClicked: {
                Library.selection = "allApps";
                ViewModel.updateFilteredApps();
            }
        }
    }

    SearchField {
        id: searchField
        // In the middle as far as there is room.
        x: Math.round(Math.max(root.from, Math.min((root.width - width) / 2, root.to - width)))
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.to - root.from)
    }
}
