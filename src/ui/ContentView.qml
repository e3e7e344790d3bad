pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The window: the sidebar, and beside it the applications. */
Window {
    id: root

    /*! Stored with the window's place. */
    property int sidebarWidth: divider.ideal
    readonly property bool framed: visibility !== Window.Maximized && visibility !== Window.FullScreen

    title: qsTr("Quillbay")
    color: Theme.windowBackground
    flags: Qt.Window | Qt.FramelessWindowHint

    Shortcut {
        sequence: "Ctrl+Q"
        // Not Qt.quit(), which asks every window to close: closing only hides this one.
        onActivated: Qt.exit(0)
    }
    LibraryShortcuts {}

    // Before the sidebar, though it stands to the right: Tab goes from the search field to the applications.
    AppGridView {
        anchors {
            left: divider.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }
        hostWindow: root
        isBrowsing: sidebar.listFocused
    }
    SidebarView {
        id: sidebar
        anchors {
            left: parent.left
            top: parent.top
            bottom: parent.bottom
        }
        width: divider.position
        topInset: 64
    }
    SidebarHeader {
        anchors {
            left: sidebar.left
            right: sidebar.right
            top: parent.top
        }
        window: root
    }
    SplitDivider {
        id: divider
        anchors {
            top: parent.top
            bottom: parent.bottom
        }
        minimum: 220
        ideal: 240
        maximum: 320
        position: Math.max(minimum, Math.min(maximum, root.sidebarWidth))
        onMoved: position => root.sidebarWidth = position
    }

    Rectangle {
        anchors.fill: parent
        visible: root.framed
        color: "transparent"
        border.color: Theme.dark ? Qt.rgba(1, 1, 1, 0.14) : Qt.rgba(0, 0, 0, 0.16)
    }

    WindowEdges {
        anchors.fill: parent
        enabled: root.framed
        window: root
    }
}
