pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What moves in a tile, and the plate that comes with it. Tiles have it from the first time that they are touched: most
    never are. */
Item {
    id: root

    property bool isHovering: false
    property bool isPressed: false
    property bool isLaunching: false
    property bool isTargeted: false

    /*! 0 at rest, 1 with the pointer over the tile; between, and shortly beyond, on the spring. */
    property real hover: isHovering ? 1 : 0
    property real press: isPressed ? 1 : 0
    property real target: isTargeted ? 1 : 0
    property real iconLaunch: isLaunching ? 1 : 0
    property real textLaunch: isLaunching ? 1 : 0

    readonly property Rotation tilt: Rotation {
        origin.x: 40
        origin.y: 40
        axis {
            x: 1
            y: 0
            z: 0
        }
        angle: 5 * root.hover
    }

    /*! It has been seen that the application is launched. */
    signal launchShown

    Behavior on hover {
        SpringMotion {}
    }
    Behavior on press {
        SpringMotion {}
    }
    Behavior on target {
        SpringMotion {
            preset: SpringMotion.DragHighlight
        }
    }
    Behavior on iconLaunch {
        EaseOut {
            duration: 300
        }
    }
    Behavior on textLaunch {
        EaseOut {
            duration: 200
        }
    }
    Timer {
        interval: 300
        running: root.isLaunching
        onTriggered: root.launchShown()
    }

    PictureItem {
        anchors.fill: parent
        visible: root.hover > 0
        picture: visible ? Artwork.plate(90, 20, Theme.primary, Screen.devicePixelRatio) : undefined
        opacity: Math.min(1, root.hover)
    }
}
