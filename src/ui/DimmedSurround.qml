pragma ComponentBehavior: Bound

import QtQuick

/*! Darkens everything but what an opaque panel covers anyway: on a large window half of the work of drawing it. */
Item {
    id: root

    /*! Left as it is. */
    required property rect hole

    component Part: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.45)
    }

    Part {
        width: root.width
        height: root.hole.top
    }
    Part {
        y: root.hole.bottom
        width: root.width
        height: root.height - y
    }
    Part {
        y: root.hole.top
        width: root.hole.left
        height: root.hole.height
    }
    Part {
        x: root.hole.right
        y: root.hole.top
        width: root.width - x
        height: root.hole.height
    }
}
