pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! White on blue, with a symbol in front. */
CapsuleButton {
    id: root

    foreground: "white"
    fontSize: 13
    horizontalPadding: 20
    verticalPadding: 10
    cornerRadius: Theme.fieldRadius
    background: Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: Theme.mix(Theme.blue, "black", 0.12 * root.pressProgress)
    }
}
