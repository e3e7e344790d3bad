pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Tells that the files of other applications are out of reach, and how that is changed. The way on is the user's: what is
    missing is looked for once the settings have been opened. */
Item {
    id: root

    required property UninstallerFlow flow

    signal dismissed

    Column {
        readonly property real taken: glow.height + title.height + body.height + panel.height + buttons.height

        anchors.centerIn: parent
        width: parent.width
        // With tall fonts the buttons would come to lie on the panel's edge.
        spacing: Math.min(28, Math.floor((root.height - 2 * 16 - taken) / 4))

        PictureItem {
            id: glow
            readonly property real ratio: Screen.devicePixelRatio
            anchors.horizontalCenter: parent.horizontalCenter
            width: 160
            height: 160
            picture: Artwork.glow(160, Theme.fade("#5E5CE6", 0.3), ratio)

            PictureItem {
                anchors.centerIn: parent
                width: 80
                height: 80
                picture: Artwork.symbol("lock.shield.fill", 64, width, "#5E5CE6", "#BF5AF2", glow.ratio)
            }
        }
        Text {
            id: title
            anchors.horizontalCenter: parent.horizontalCenter
            text: Wording.of(qsTr("Full Disk Access Required"))
            color: Theme.primary
            font {
                pixelSize: 20
                bold: true
            }
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            id: body
            width: parent.width
            leftPadding: 40
            rightPadding: 40
            text: Wording.of(qsTr("To scan and remove all residual files for %1, Quillbay needs Full Disk Access.\nThis is required to find files in protected Library folders.")).arg(root.flow.appName)
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            lineHeightMode: Text.FixedHeight
            lineHeight: Math.ceil(metrics.height) + 3
            color: Theme.secondary
            font.pixelSize: 13
            Accessible.role: Accessible.StaticText
            Accessible.name: text

            FontMetrics {
                id: metrics
                font.pixelSize: 13
            }
        }
        Rectangle {
            id: panel
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(steps.width + 32, parent.width - 80)
            height: steps.height + 32
            radius: 14
            color: Theme.dark ? Theme.fade(Theme.primary, 0.06) : Theme.material("ultraThin", false, false)

            Column {
                id: steps
                x: 16
                y: 16
                spacing: 10

                AccessStep {
                    number: "1"
                    text: Wording.of(qsTr("Click \"Open System Settings\" below"))
                }
                AccessStep {
                    number: "2"
                    text: qsTr("Find Quillbay in the list and toggle it ON")
                }
                AccessStep {
                    number: "3"
                    text: qsTr("Return here — scanning will start automatically")
                }
            }
        }
        Row {
            id: buttons
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12

            GhostButtonStyle {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Cancel")
                onClicked: root.dismissed()
            }
            PrimaryButtonStyle {
                text: Wording.of(qsTr("Open System Settings"))
                symbol: "gear"
                onClicked: root.flow.openSystemSettings()
            }
        }
    }
}
