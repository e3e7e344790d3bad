pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates // qmllint disable unused-imports

/*! Brings the keyboard back where it was before a sheet, popover or menu took it. */
QtObject {
    id: root

    property Item origin: null

    /*! `item` is any item of the window. */
    function remember(item: Item) {
        root.origin = item ? item.Window.activeFocusItem : null;
    }
    function isIn(ancestor: Item, item: Item): bool {
        while (item && item !== ancestor)
            item = item.parent;
        return item !== null;
    }
    /*! Nothing happens once the place is gone, or when something else has the keyboard by now: also what has been opened
        meanwhile in a window that is not the active one. */
    function giveBack() {
        const place = root.origin;
        root.origin = null;
        if (!place || !place.visible)
            return;
        const held = place.Window.activeFocusItem;
        if (held && held !== place.Window.contentItem)
            return;
        // In a window that is not the active one nobody has it, whoever will.
        const overlay = place.Overlay.overlay;
        if (!held && overlay.visible && !isIn(overlay, place))
            return;
        place.forceActiveFocus(Qt.PopupFocusReason);
    }
}
