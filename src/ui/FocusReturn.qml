pragma ComponentBehavior: Bound

import QtQuick

/*! Brings the keyboard back where it was before a sheet, popover or menu took it. */
QtObject {
    id: root

    property Item origin: null

    /*! `item` is any item of the window. */
    function remember(item: Item) {
        root.origin = item ? item.Window.activeFocusItem : null;
    }
    /*! Nothing happens once the place is gone, or when something else has the keyboard by now. */
    function giveBack() {
        const held = root.origin ? root.origin.Window.activeFocusItem : null;
        if (root.origin && root.origin.visible && (!held || held === root.origin.Window.contentItem))
            root.origin.forceActiveFocus(Qt.PopupFocusReason);
        root.origin = null;
    }
}
