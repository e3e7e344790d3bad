pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Shown while the first scan runs and nothing is known yet. */
Item {
    id: root

    readonly property real ratio: Screen.devicePixelRatio

    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("Initializing app space...")

    Column {
        anchors.centerIn: parent
        spacing: 24

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 80
            height: 80

            PictureItem {
                id: ring
                anchors.fill: parent
                picture: Artwork.ring(80, 4, Theme.fade(Theme.blue, 0.6), Theme.fade(Theme.purple, 0.6), root.ratio * 1.25)
                ParallelAnimation {
                    running: root.visible && !Theme.reducedMotion
                    loops: Animation.Infinite
                    EaseOut { target: ring; property: "scale"; from: 0.75; to: 1.25; duration: 1500 }
                    EaseOut { target: ring; property: "opacity"; from: 0.8; to: 0; duration: 1500 }
                }
            }
            PictureItem {
                id: arc
                anchors.centerIn: parent
                width: 60
                height: 60
                picture: Artwork.arc(60, 3, 252, Theme.blue, Theme.purple, root.ratio)
                NumberAnimation on rotation {
                    running: root.visible && !Theme.reducedMotion
                    from: 0
                    to: 360
                    duration: 3000
                    loops: Animation.Infinite
                }
            }
            PictureItem {
                id: core
                anchors.centerIn: parent
                width: 80
                height: 80
                picture: Artwork.glowingDisc(80, 32, 8, Theme.blue, Theme.cyan, Theme.fade(Theme.blue, 0.5), root.ratio * 1.1)
                SequentialAnimation {
                    running: root.visible && !Theme.reducedMotion
                    loops: Animation.Infinite
                    EaseInOut { target: core; property: "scale"; from: 0.9; to: 1.1; duration: 750 }
                    EaseInOut { target: core; property: "scale"; from: 1.1; to: 0.9; duration: 750 }
                }
            }
        }

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 6

            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Quillbay")
                color: Theme.fade(Theme.primary, 0.9)
                font {
                    pixelSize: 22
                    weight: Font.Bold
                }
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Initializing app space...")
                color: Theme.secondary
                font {
                    pixelSize: 13
                    weight: Font.Medium
                }
            }
        }
    }
}
