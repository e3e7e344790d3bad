pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A button of the lock's screens: white on a blue plate, unless it is told otherwise. */
CapsuleButton {
    id: root

    property color fill: Theme.blue

    foreground: "white"
    horizontalPadding: 24
    verticalPadding: 8
    cornerRadius: 8
    spacing: 8
    background: Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: root.fill

        Rectangle {
            anchors.fill: parent
            visible: root.fill.a > 0
            radius: root.cornerRadius
            color: "black"
            opacity: 0.12 * root.pressProgress
        }
    }
}
