pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Minimise, maximise and close, for a window without a frame of the desktop's. */
Row {
    id: root

    required property Window window

    spacing: 8

    function toggleMaximized() {
        if (root.window.visibility === Window.Maximized)
            root.window.showNormal();
        else
            root.window.showMaximized();
    }

    WindowButton {
        symbol: "minus"
        label: qsTr("Minimize")
        onClicked: root.window.showMinimized()
    }
    WindowButton {
        symbol: "square"
        label: root.window?.visibility === Window.Maximized ? qsTr("Restore") : qsTr("Maximize")
        onClicked: root.toggleMaximized()
    }
    WindowButton {
        symbol: "xmark"
        label: qsTr("Close")
        onClicked: root.window.close()
    }
}
