pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! The title of a tool, and beside it for a moment what it has just done. */
Item {
    id: root

    required property string title
    property string message

    implicitHeight: heading.implicitHeight

    Text {
        id: heading
        text: root.title
        textFormat: Text.PlainText
        color: Theme.primary
        font {
            pixelSize: 14
            bold: true
        }
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Text {
        anchors {
            left: heading.right
            leftMargin: 8
            baseline: heading.baseline
        }
        visible: text !== ""
        text: root.message
        textFormat: Text.PlainText
        color: Theme.green
        font {
            pixelSize: 11
            weight: Font.Medium
        }
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
