pragma ComponentBehavior: Bound

import QtQuick

/*! One colour over everything but a rectangle in it, which may reach beyond. */
Item {
    id: root

    /*! Left as it is. */
    required property rect hole
    required property color color

    readonly property real holeLeft: Math.max(0, Math.min(width, hole.left))
    readonly property real holeRight: Math.max(holeLeft, Math.min(width, hole.right))
    readonly property real holeTop: Math.max(0, Math.min(height, hole.top))
    readonly property real holeBottom: Math.max(holeTop, Math.min(height, hole.bottom))

    component Part: Rectangle {
        color: root.color
    }

    Part {
        width: root.width
        height: root.holeTop
    }
    Part {
        y: root.holeBottom
        width: root.width
        height: root.height - y
    }
    Part {
        y: root.holeTop
        width: root.holeLeft
        height: root.holeBottom - y
    }
    Part {
        x: root.holeRight
        y: root.holeTop
        width: root.width - x
        height: root.holeBottom - y
    }
}
