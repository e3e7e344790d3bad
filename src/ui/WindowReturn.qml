pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/*! Tells that the window has come back and what is in it needs the keyboard: a popover, menu or sheet keeps it, also one
    that the press has opened which brought the window back. */
Item {
    id: root

    required property Window window
    readonly property Item overlay: T.Overlay.overlay

    signal returned

    /*! Not at once: what had the keyboard is given it back after this. */
    function look() {
        if (root.window.active && !overlay.visible)
            returned();
    }

    Connections {
        target: root.window
        function onActiveChanged() {
            Qt.callLater(root.look); // qmllint disable type
        }
    }
}
