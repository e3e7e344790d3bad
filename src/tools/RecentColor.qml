pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A colour that was picked before. */
ChoiceCell {
    id: root

    required property string hex

    implicitWidth: 18
    implicitHeight: 18
    cornerRadius: 4
    label: hex

    Rectangle {
        anchors.fill: parent
        radius: 4
        color: ColorHex.color(root.hex)
        border.color: Theme.fade(Theme.primary, 0.15)
    }
    HoverHelp {
        target: root
        text: root.hex
        hovered: hover.hovered
    }
    HoverHandler {
        id: hover
    }
}
