pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Shows what is typed as a QR code, to be copied or dragged away. */
Popover {
    id: root

    readonly property QRGenerator generator: QRGenerator {
        previewSide: Math.round(140 * root.contentItem.Screen.devicePixelRatio)
    }

    title: qsTr("QR Generator")
    padding: 16
    contentWidth: 260 - 2 * padding
    contentHeight: content.implicitHeight

    Column {
        id: content
        width: parent.width
        spacing: 12

        PopoverHeading {
            width: parent.width
            title: root.title
            message: root.generator.copyMessage
        }
        ToolField {
            width: parent.width
            implicitHeight: 32
            focus: true
            placeholder: qsTr("Type URL or text...")
            text: root.generator.text
            onEdited: text => root.generator.text = text
        }
        Item {
            width: parent.width
            height: 156 + 8 + exports.height
            visible: root.generator.hasCode

            QRCodeCard {
                id: card
                anchors.horizontalCenter: parent.horizontalCenter
                generator: root.generator
            }
            Row {
                id: exports
                anchors {
                    top: card.bottom
                    topMargin: 8
                    horizontalCenter: parent.horizontalCenter
                }
                spacing: 10

                PlainButton {
                    text: qsTr("Copy")
                    onClicked: root.generator.copy()
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Drag to export")
                    textFormat: Text.PlainText
                    color: Theme.secondary
                    font.pixelSize: 10
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
        Item {
            width: parent.width
            height: 160
            visible: !root.generator.hasCode

            Column {
                anchors.centerIn: parent
                width: parent.width
                spacing: 8

                Symbol {
                    anchors.horizontalCenter: parent.horizontalCenter
                    name: "qrcode"
                    size: 48
                    color: Theme.fade(Theme.secondary, 0.2)
                }
                Text {
                    width: parent.width
                    text: qsTr("Enter text above to preview QR")
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    color: Theme.secondary
                    font.pixelSize: 11
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }
}
