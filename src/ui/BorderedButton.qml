pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A plate with a thin border: a symbol and a text. */
PushButton {
    id: root

    property string symbol

    fill: Theme.fade(ink, 0.06)
    stroke: Theme.fade(ink, 0.2)
    ink: Theme.primary
    focusPolicy: Qt.TabFocus

    contentItem: Row {
        spacing: 6
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
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
