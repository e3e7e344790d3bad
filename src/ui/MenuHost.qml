pragma ComponentBehavior: Bound

import QtQuick

/*! Makes a menu when it is first asked for and opens it below an item. What makes menus speaks to them without naming their
    type: whatever is named is read before the first picture. */
Loader {
    id: root

    readonly property var menu: item
    readonly property bool open: menu ? menu.visible : false

    function popUpBelow(anchor: Item) {
        active = true;
        menu.popup(anchor, 0, anchor.height + 4);
    }

    active: false
}
