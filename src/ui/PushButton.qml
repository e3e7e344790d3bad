pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! What the buttons of sheets have in common: a rounded plate with its text. Space and Return press it. */
T.Button {
    id: root

    /*! For the one answer that a whole sheet leads to. */
    property bool large: false
    property color fill
    property color stroke: "transparent"
    property color ink
    readonly property real cornerRadius: large ? 8 : 6

    implicitWidth: Math.max(64, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: large ? 18 : 14
    verticalPadding: large ? 8 : 5
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)

    function press(event: KeyEvent) {
        if (!event.isAutoRepeat)
            clicked();
    }

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        color: root.ink
        font {
            pixelSize: 13
            weight: Font.Medium
        }
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        radius: root.cornerRadius
        color: root.fill
        border.color: root.stroke
        border.width: root.stroke.a > 0 ? Theme.hairline : 0

        Rectangle {
            anchors.fill: parent
            radius: root.cornerRadius
            color: Theme.dark ? "white" : "black"
            opacity: root.down ? 0.16 : root.hovered ? 0.06 : 0
        }
        FocusRing {
            cornerRadius: root.cornerRadius
            visible: root.activeFocus
        }
    }
}
