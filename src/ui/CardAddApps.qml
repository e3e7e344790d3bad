pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! What a card without applications offers instead of them. Its clicks are the card's, which can be dragged by it. */
Item {
    id: root

    signal clicked

    readonly property color ink: Theme.dark ? "white" : Theme.primary

    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Add Apps")
    Accessible.onPressAction: clicked()

    Column {
        anchors {
            centerIn: parent
            verticalCenterOffset: -10
        }
        spacing: 8
        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "plus.circle.fill"
            size: 32
            color: Theme.fade(root.ink, 0.3)
        }
        Text {
            text: qsTr("Add Apps")
            color: Theme.fade(root.ink, 0.5)
            font {
                pixelSize: 14
                weight: Font.Medium
            }
        }
    }
}
