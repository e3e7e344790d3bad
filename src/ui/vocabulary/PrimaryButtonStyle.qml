pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

CapsuleButton {
    id: root

    foreground: "white"
    horizontalPadding: 18
    verticalPadding: 9

    background: Rectangle {
        anchors.fill: parent
        radius: height / 2
        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: Theme.mix("#5E5CE6", "#4048C8", root.pressProgress)
            }
            GradientStop {
                position: 1
                color: Theme.mix("#BF5AF2", "#9040C8", root.pressProgress)
            }
        }
    }
}
