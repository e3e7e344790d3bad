pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The shadow of a rounded rectangle that lies where this item does. Painted once for a size. */
Item {
    id: root

    property real radius: 32
    /*! Standard deviation of the blur. */
    property real blur: 40
    property real offset: 20
    property color color: Qt.rgba(0, 0, 0, 0.25)
    /*! Nothing is drawn where the rectangle itself hides it, drawn at `hiddenFrom` of its size or larger. */
    property bool hollow: false
    property real hiddenFrom: 1
    /*! Below the shadow, as far as it reaches. */
    property color ground: "transparent"
    /*! What it reaches, in the coordinates of this item's parent. */
    readonly property rect reach: Qt.rect(x + picture.x, y + picture.y, picture.width, picture.height)

    PictureItem {
        id: picture

        // From an edge to the corner of a rectangle that the rounded one contains.
        readonly property real corner: root.radius * (1 - Math.SQRT1_2)
        readonly property real insetX: corner + root.width * (1 - root.hiddenFrom) / 2
        readonly property real insetY: corner + root.height * (1 - root.hiddenFrom) / 2

        readonly property real margin: Artwork.shadowReach(root.blur, root.color)

        x: -margin
        y: -margin + root.offset
        width: root.width + 2 * margin
        height: root.height + 2 * margin
        hole: root.hollow ? Qt.rect(insetX - x, insetY - y, root.width - 2 * insetX, root.height - 2 * insetY) : Qt.rect(0, 0, 0, 0)
        picture: root.visible ? Artwork.shadow(root.width, root.height, root.radius, root.blur, root.color, root.ground) : undefined
    }
}
