pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The window's header above the sidebar: its name and the menu of the library's commands. */
Item {
    id: root

    required property Window window

    implicitHeight: 64

    WindowDragZone {
        anchors.fill: parent
        window: root.window
        onDoubleClicked: root.window.visibility === Window.Maximized ? root.window.showNormal() : root.window.showMaximized()
    }
    Text {
        anchors {
            left: parent.left
            leftMargin: 20
            verticalCenter: parent.verticalCenter
        }
        text: qsTr("Quillbay")
        color: Theme.primary
        font {
            pixelSize: 15
            weight: Font.Bold
        }
    }
    ToolbarButton {
        id: menuButton
        anchors {
            right: parent.right
            rightMargin: 10
            verticalCenter: parent.verticalCenter
        }
        symbol: "line.3.horizontal"
        label: qsTr("Library")
        opensPopup: true
        open: menu.open
        onClicked: menu.popUpBelow(menuButton)
    }
    MenuHost {
        id: menu
        source: "LibraryMenu.qml"
    }
}
