pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A colour that a note can have, with a ring while it has it. */
ChoiceCell {
    id: root

    required property string hex

    implicitWidth: 14
    implicitHeight: 14
    cornerRadius: 7

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: ColorHex.color(root.hex)
    }
    Rectangle {
        anchors {
            fill: parent
            margins: -border.width / 2
        }
        radius: width / 2
        visible: root.selected
        color: "transparent"
        border.width: 1.5
        border.color: Theme.fade(Theme.primary, 0.8)
    }
}
