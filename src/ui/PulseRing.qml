pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A ring that spreads and fades, again and again, for as long as it is shown. Where motion is reduced it stands still,
    the later ones farther out. */
PictureItem {
    id: root

    /*! Before the first time, in milliseconds. */
    property int delay: 0

    readonly property int period: 1600
    readonly property bool isMoving: visible && !Theme.reducedMotion
    readonly property real stillPart: (delay + 350) / period

    width: 120
    height: 120
    scale: 0.5
    opacity: 0.6
    picture: Artwork.ring(width, 2, Theme.purple, Theme.purple, Screen.devicePixelRatio * 1.5)

    SequentialAnimation {
        running: root.isMoving
        PauseAnimation {
            duration: root.delay
        }
        ParallelAnimation {
            loops: Animation.Infinite
            EaseOut {
                target: root
                property: "scale"
                from: 0.5
                to: 1.8
                duration: root.period
            }
            EaseOut {
                target: root
                property: "opacity"
                from: 0.6
                to: 0
                duration: root.period
            }
        }
    }
    states: State {
        when: Theme.reducedMotion
        PropertyChanges {
            root.scale: 0.5 + 1.3 * root.stillPart
            root.opacity: 0.6 * (1 - root.stillPart)
        }
    }
}
