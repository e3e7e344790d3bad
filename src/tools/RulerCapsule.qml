pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The size of the ruler in large figures, and the button that closes it. Dark in either appearance: it lies over
    whatever is on the screen. */
Item {
    id: root

    required property int measuredWidth
    required property int measuredHeight

    readonly property alias radius: plate.radius

    signal closed

    implicitHeight: content.implicitHeight + 2 * 12

    FloatShadow {
        anchors.fill: parent
        radius: 16
        blur: 10
        offset: 5
        color: Qt.rgba(0, 0, 0, 0.25)
    }
    Rectangle {
        id: plate
        anchors.fill: parent
        radius: 16
        color: Qt.rgba(0.11, 0.11, 0.12, 0.82)
        border.color: Qt.rgba(1, 1, 1, 0.12)
    }
    Column {
        id: content
        anchors {
            left: parent.left
            right: parent.right
            leftMargin: 16
            rightMargin: 16
            verticalCenter: parent.verticalCenter
        }
        spacing: 4

        Item {
            width: parent.width
            height: closeButton.height

            SymbolButton {
                id: closeButton
                anchors.left: parent.left
                anchors.leftMargin: -4
                symbol: "xmark.circle.fill"
                label: qsTr("Close Ruler")
                size: 15
                ink: Qt.rgba(1, 1, 1, hovered ? 0.9 : 0.6)
                onClicked: root.closed()
            }
            Text {
                anchors {
                    right: parent.right
                    verticalCenter: parent.verticalCenter
                }
                text: qsTr("MEASURE OVERLAY")
                textFormat: Text.PlainText
                color: "#0a84ff"
                font {
                    pixelSize: 9
                    bold: true
                    letterSpacing: 1.5
                }
            }
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            // Closer in a small ruler and with long numbers.
            spacing: Math.max(6, Math.min(20, Math.floor((content.width - across.width - down.width - 1) / 2)))

            Readout {
                id: across
                letter: qsTr("W")
                label: qsTr("Width")
                length: root.measuredWidth
            }
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 1
                height: 28
                color: Qt.rgba(1, 1, 1, 0.15)
            }
            Readout {
                id: down
                letter: qsTr("H")
                label: qsTr("Height")
                length: root.measuredHeight
            }
        }
    }

    component Readout: Column {
        id: readout

        required property string letter
        required property string label
        required property int length

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: readout.letter
            textFormat: Text.PlainText
            color: Qt.rgba(1, 1, 1, 0.6)
            font.pixelSize: 9
        }
        Text {
            text: qsTr("%1 px").arg(readout.length)
            textFormat: Text.PlainText
            color: "white"
            font {
                pixelSize: 20
                weight: Font.Medium
            }
            Accessible.role: Accessible.StaticText
            Accessible.name: readout.label + " " + text
        }
    }
}
