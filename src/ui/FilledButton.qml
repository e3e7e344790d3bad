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
    background: Rectangle {
        anchors.fill: parent
        radius: Theme.fieldRadius
        color: Theme.mix(Theme.blue, "black", 0.12 * root.pressProgress)
    }
}
