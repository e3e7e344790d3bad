pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Makes a menu when it is first asked for and opens it below an item. */
Loader {
    id: root

    readonly property bool open: item ? (item as PanelMenu).visible : false

    function popUpBelow(anchor: Item) {
        active = true;
        const menu = item as PanelMenu;
        menu.popup(anchor, 0, anchor.height + 4);
    }

    active: false
}
