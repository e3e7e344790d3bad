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
    /*! Nothing is drawn where the rectangle itself hides it. */
    property bool hollow: false
    /*! Below the shadow, as far as it reaches. */
    property color ground: "transparent"
    /*! What it reaches, in the coordinates of this item's parent. */
    readonly property rect reach: Qt.rect(x + picture.x, y + picture.y, picture.width, picture.height)

    PictureItem {
        id: picture
        x: -3 * root.blur
        y: -3 * root.blur + root.offset
        width: root.width + 6 * root.blur
        height: root.height + 6 * root.blur
        hole: root.hollow ? Qt.rect(3 * root.blur + root.radius, 3 * root.blur - root.offset + root.radius, root.width - 2 * root.radius, root.height - 2 * root.radius) : Qt.rect(0, 0, 0, 0)
        picture: root.visible ? Artwork.shadow(root.width, root.height, root.radius, root.blur, root.color, root.ground) : undefined
    }
}
