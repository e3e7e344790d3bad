pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! A button of the lock's screens: a text, and a symbol in front where it has one, on a rounded plate. A click leaves the
    keyboard where it is. */
T.Button {
    id: root

    property string symbol
    property color fill: Theme.blue
    property color ink: "white"
    property real radius: 8

    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.ceil(implicitContentHeight + topPadding + bottomPadding)
    horizontalPadding: 24
    verticalPadding: 8
    focusPolicy: Qt.TabFocus
    font {
        pixelSize: 13
        weight: Font.DemiBold
    }

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)

    function press(event: KeyEvent) {
        if (!event.isAutoRepeat)
            clicked();
    }

    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight

        Row {
            id: row
            anchors.centerIn: parent
            spacing: 8

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.symbol !== ""
                name: root.symbol
                size: 18
                color: root.ink
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                textFormat: Text.PlainText
                color: root.ink
                font: root.font
            }
        }
    }
    background: Rectangle {
        radius: root.radius
        color: root.fill

        Rectangle {
            anchors.fill: parent
            radius: root.radius
            visible: root.fill.a > 0
            color: Theme.dark ? "white" : "black"
            opacity: root.down ? 0.16 : root.hovered ? 0.06 : 0
        }
        FocusRing {
            cornerRadius: root.radius
            visible: root.activeFocus
        }
    }
}
