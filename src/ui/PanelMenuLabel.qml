pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! What an entry of a menu shows: its text, and at the end the keys that do the same or a symbol. */
Item {
    id: root

    required property string text
    required property string hint
    required property string mark
    required property color ink
    required property color hintInk

    implicitWidth: Math.ceil(label.implicitWidth) + (hint === "" ? 28 : Math.ceil(keys.implicitWidth) + 36)

    Text {
        id: label
        anchors {
            left: parent.left
            right: symbol.left
            rightMargin: 8
            verticalCenter: parent.verticalCenter
        }
        text: root.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: root.ink
        font {
            pixelSize: 13
            weight: Font.Normal
        }
    }
    Text {
        id: keys
        anchors {
            right: parent.right
            verticalCenter: parent.verticalCenter
        }
        text: root.hint
        color: root.hintInk
        font.pixelSize: 12
    }
    Symbol {
        id: symbol
        anchors {
            right: parent.right
            verticalCenter: parent.verticalCenter
        }
        width: 16
        name: root.mark
        size: 13
        color: root.ink
    }
}
