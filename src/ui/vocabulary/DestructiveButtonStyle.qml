pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

CapsuleButton {
    id: root

    foreground: Theme.red
    horizontalPadding: 16
    verticalPadding: 9

    background: Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.fade(Theme.red, 0.1 + 0.1 * root.pressProgress)
        border.color: Theme.fade(Theme.red, 0.3)
        border.width: Theme.hairline
    }
}
