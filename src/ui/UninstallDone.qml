pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What became of it, and the way to take it back. */
Item {
    id: root

    required property UninstallerFlow flow

    signal dismissed

    Column {
        anchors.centerIn: parent
        anchors.verticalCenterOffset: -12
        width: parent.width
        // Both texts at once leave less room.
        spacing: root.flow.errorCount > 0 && root.flow.putBackText !== "" ? 16 : 32

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 100
            height: 100

            FloatShadow {
                anchors.fill: parent
                radius: 50
                blur: 20
                offset: 6
                color: Theme.fade("#30D158", 0.4)
            }
            PictureItem {
                anchors.fill: parent
                picture: Artwork.glowingDisc(100, 100, 1, "#34C759", "#30D158", "transparent", Screen.devicePixelRatio)
            }
            Symbol {
                anchors.centerIn: parent
                name: "checkmark"
                size: 40
                weight: Font.Bold
                color: "white"
            }
        }
        Column {
            width: parent.width
            spacing: 10

            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Uninstall Complete")
                color: Theme.primary
                font {
                    pixelSize: 22
                    bold: true
                }
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Removed %1 items · Freed %2").arg(root.flow.removedCount).arg(root.flow.freedText)
                color: Theme.secondary
                font {
                    pixelSize: 14
                    weight: Font.Medium
                }
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        UninstallErrors {
            x: 40
            width: parent.width - 80
            visible: count > 0
            count: root.flow.errorCount
            messages: root.flow.errors
        }
        Text {
            x: 40
            width: parent.width - 80
            visible: text !== ""
            text: root.flow.putBackText
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.secondary
            font.pixelSize: 12
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12

            GhostButtonStyle {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.flow.canPutBack
                text: qsTr("Put Back")
                onClicked: root.flow.putBack()
            }
            PrimaryButtonStyle {
                text: qsTr("Done")
                onClicked: root.dismissed()
            }
        }
    }
}
