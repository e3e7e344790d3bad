pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What a tool is opened for: a prominent button with a symbol before its text. */
ProminentButton {
    id: root

    required property string symbol

    verticalPadding: 7
    contentItem: Item {
        implicitWidth: children[0].implicitWidth
        implicitHeight: children[0].implicitHeight

        Row {
            anchors.centerIn: parent
            spacing: 7

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: root.symbol
                size: 13
                color: root.ink
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                textFormat: Text.PlainText
                color: root.ink
                font {
                    pixelSize: 13
                    weight: Font.Medium
                }
            }
        }
    }
}
