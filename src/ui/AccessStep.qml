pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! One of the steps to take, with its number. */
Row {
    id: root

    required property string number
    required property string text

    spacing: 12

    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1. %2").arg(number).arg(text)

    PictureItem {
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20
        picture: Artwork.glowingDisc(20, 20, 1, "#5E5CE6", "#BF5AF2", "transparent", Screen.devicePixelRatio)

        Text {
            anchors.centerIn: parent
            text: root.number
            color: "white"
            font {
                pixelSize: 11
                bold: true
            }
        }
    }
    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        color: Theme.fade(Theme.primary, 0.85)
        font {
            pixelSize: 13
            weight: Font.Medium
        }
    }
}
