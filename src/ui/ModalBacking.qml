pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! The ground of the panel of an expanded card. What lies behind it is drawn by the window itself, where nothing can blur
    it: the panel is the colour that a blurred background would give. */
Rectangle {
    id: root

    readonly property color behind: Theme.mix(Theme.windowBackground, "black", 0.45)

    function over(layer: color, ground: color): color {
        return Theme.mix(ground, Qt.rgba(layer.r, layer.g, layer.b, 1), layer.a);
    }

    radius: Theme.cardRadius
    color: Theme.dark ? over(Qt.rgba(0, 0, 0, 0.2), over(Theme.material("ultraThin", true, false), behind)) : over(Theme.material("sidebar", false, false), behind)
    border.color: Theme.dark ? Qt.rgba(1, 1, 1, 0.1) : Qt.rgba(0, 0, 0, 0.1)
}
