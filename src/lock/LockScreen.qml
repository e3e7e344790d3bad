pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Lock
import Quillbay.Vocabulary

/*! What the screens of the lock have in common: in the middle of the place of the hidden list a badge, a title and a line
    of text, and below them what the screen itself adds. */
FocusScope {
    id: root

    required property SecurityLock viewModel
    required property string symbol
    required property string title
    required property string explanation
    property real explanationWidth: explanationText.implicitWidth
    property string errorMessage
    default property alias content: column.data

    Accessible.role: Accessible.Pane
    Accessible.name: title

    Column {
        id: column
        anchors.centerIn: parent
        spacing: 24

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 80
            height: 80
            radius: 40
            color: Theme.fade(Theme.blue, 0.12)

            Symbol {
                anchors.centerIn: parent
                name: root.symbol
                size: 40
                color: Theme.blue
            }
        }
        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 8

            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: root.title
                color: Theme.primary
                Accessible.role: Accessible.Heading
                Accessible.name: text
                font {
                    pixelSize: 20
                    weight: Font.Bold
                }
            }
            Text {
                id: explanationText
                anchors.horizontalCenter: parent.horizontalCenter
                width: root.explanationWidth
                text: root.explanation
                color: Theme.secondary
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                font.pixelSize: 13
            }
        }
    }
}
