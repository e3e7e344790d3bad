pragma ComponentBehavior: Bound

import QtQuick

/*! Makes the tiles' context menu when it is first asked for. */
Loader {
    id: root

    function popUpFor(tile, x, y) {
        active = true;
        const menu = item as TileMenu;
        menu.tile = tile;
        menu.popup(tile, x, y);
    }

    active: false
    source: "TileMenu.qml"
}
