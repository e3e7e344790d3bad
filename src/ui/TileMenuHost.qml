pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Makes the tiles' context menu when it is first asked for. */
Loader {
    id: root

    readonly property var menu: item

    function popUpFor(tile: AppItemView, x: real, y: real) {
        active = true;
        menu.popUpFor(tile);
        menu.popup(tile, x, y);
    }

    function popUpInTheMiddle(tile: AppItemView) {
        popUpFor(tile, tile.width / 2, 60);
    }

    active: false
    source: "TileMenu.qml"
}
