pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/*! Tells that the window has come back and what is in it needs the keyboard: a popover, menu or sheet that had it still
    has it. */
Item {
    id: root

    required property Window window
    readonly property Item overlay: T.Overlay.overlay

    signal returned

    function isInPopup(item: Item): bool {
        while (item && item !== overlay)
            item = item.parent;
        return item !== null;
    }

    /*! Not at once: what had the keyboard is given it back after this. */
    function look() {
        if (root.window.active && !isInPopup(root.window.activeFocusItem))
            returned();
    }

    Connections {
        target: root.window
        function onActiveChanged() {
            Qt.callLater(root.look); // qmllint disable type
        }
    }
}
