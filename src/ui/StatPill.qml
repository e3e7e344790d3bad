pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A figure and what it counts. */
Column {
    id: root

    required property string label
    required property string value
    required property color color

    spacing: 2

    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("%1: %2").arg(label).arg(value)

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.value
        color: root.color
        font {
            pixelSize: 14
            bold: true
        }
    }
    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.label
        color: Theme.secondary
        font {
            pixelSize: 10
            weight: Font.Medium
        }
    }
}
