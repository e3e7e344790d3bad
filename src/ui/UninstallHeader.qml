pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What is uninstalled, how much would go, and the way out. */
Item {
    id: root

    required property UninstallerFlow flow

    readonly property string title: qsTr("Uninstall %1").arg(flow.appName)

    signal dismissed

    implicitHeight: 40 + 32

    RoundedIcon {
        id: icon
        x: 24
        y: 16
        width: 40
        height: 40
        radius: 10
        path: root.flow.appPath
    }
    Column {
        anchors {
            left: icon.right
            leftMargin: 14
            right: trailing.left
            rightMargin: 14
            verticalCenter: parent.verticalCenter
        }
        spacing: 2

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.primary
            font {
                pixelSize: 15
                weight: Font.DemiBold
            }
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            width: parent.width
            text: root.flow.appPath
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            color: Theme.secondary
            font.pixelSize: 11
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Row {
        id: trailing
        anchors {
            right: parent.right
            rightMargin: 24
            verticalCenter: parent.verticalCenter
        }
        spacing: 14

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.ceil(badge.width) + 20
            height: Math.ceil(badge.height) + 10
            radius: height / 2
            visible: root.flow.stage !== UninstallerFlow.Scanning
            color: Theme.fade(Theme.orange, 0.12)

            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("Size of the selection: %1").arg(root.flow.formattedTotalSize)

            Row {
                id: badge
                anchors.centerIn: parent
                spacing: 4

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "internaldrive.fill"
                    size: 12
                    color: Theme.orange
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.flow.formattedTotalSize
                    color: Theme.orange
                    font {
                        pixelSize: 13
                        weight: Font.DemiBold
                    }
                }
            }
        }
        ModalCloseButton {
            anchors.verticalCenter: parent.verticalCenter
            ink: Theme.fade(Theme.secondary, 0.7)
            onClicked: root.dismissed()
        }
    }
}
