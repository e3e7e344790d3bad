pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

CapsuleButton {
    id: root

    property bool compact: false

    foreground: Theme.secondary
    fontSize: root.compact ? 10 : 12
    fontWeight: Font.Medium
    horizontalPadding: root.compact ? 8 : 14
    verticalPadding: root.compact ? 4 : 7

    background: Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.fade(Theme.primary, 0.06 + 0.04 * root.pressProgress)
    }
}
