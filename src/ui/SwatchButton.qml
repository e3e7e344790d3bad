pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A colour to choose. */
ChoiceCell {
    id: root

    /*! The colour as it is stored. */
    required property string hex
    property real diameter: 22
    /*! A quiet one has an outline, thicker when selected; else the selected one grows and glows. */
    property bool quiet: false

    readonly property color tint: ColorHex.color(hex)
    readonly property real strokeWidth: quiet ? 1 + look : 2 * look

    implicitWidth: diameter
    implicitHeight: diameter
    cornerRadius: diameter / 2
    scale: quiet ? 1 : 1 + 0.15 * motion

    FloatShadow {
        anchors.fill: parent
        visible: !root.quiet && root.look > 0
        opacity: root.look
        radius: root.diameter / 2
        blur: 4
        offset: 0
        color: Theme.fade(root.tint, 0.35)
    }
    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: root.tint
    }
    // The line's middle is on the circle.
    Rectangle {
        anchors.fill: parent
        anchors.margins: -root.strokeWidth / 2
        radius: width / 2
        color: "transparent"
        border.width: root.strokeWidth
        border.color: root.quiet ? Theme.fade(Theme.primary, 0.2) : Theme.fade(Theme.primary, root.look)
    }
}
