pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

Window {
    id: root

    readonly property bool framed: visibility !== Window.Maximized && visibility !== Window.FullScreen

    title: qsTr("Quillbay")
    color: Theme.windowBackground
    flags: Qt.Window | Qt.FramelessWindowHint

    Shortcut {
        sequence: "Ctrl+Q"
        // Not Qt.quit(), which asks every window to close: closing only hides this one.
        onActivated: Qt.exit(0)
    }
    Shortcut {
        sequence: "Ctrl+K"
        onActivated: Notifications.quillbaySearchFocusRequested()
    }

    AppGridView {
        anchors.fill: parent
        hostWindow: root
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
