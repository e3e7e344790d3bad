pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A key combination as the desktop writes it, on a small plate. */
Panel {
    id: root

    required property string sequence
    required property color ink

    implicitWidth: Math.round(label.implicitWidth) + 12
    implicitHeight: Math.round(label.implicitHeight) + 4
    radius: 4
    color: Theme.dark ? Qt.rgba(1, 1, 1, 0.1) : Theme.fade(Theme.primary, 0.08)

    Text {
        id: label
        anchors.centerIn: parent
        text: root.sequence
        color: root.ink
        opacity: 0.4
        font {
            pixelSize: 11
            weight: Font.Bold
        }
    }
}
