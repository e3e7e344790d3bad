pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Lock
import Quillbay.Vocabulary

/*! Tells what a finger is being waited for, where the desktop does not tell it itself. */
Rectangle {
    id: root

    required property SecurityLock viewModel
    /*! Kept while the panel fades. */
    property string reason

    readonly property string prompt: viewModel.biometricPrompt
    readonly property string hint: qsTr("Touch the fingerprint reader")

    onPromptChanged: {
        if (prompt !== "")
            reason = prompt;
    }
    Component.onCompleted: reason = prompt

    implicitWidth: row.width + 32
    implicitHeight: row.height + 24
    radius: Theme.fieldRadius
    color: Theme.mix(Theme.windowBackground, "white", Theme.dark ? 0.06 : 0.7)
    border.color: Theme.fade(Theme.primary, 0.12)

    Accessible.role: Accessible.AlertMessage
    Accessible.name: reason + ". " + hint

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 14

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "touchid"
            size: 28
            color: Theme.blue
        }
        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
            Text {
                text: root.reason
                textFormat: Text.PlainText
                color: Theme.primary
                font {
                    pixelSize: 13
                    weight: Font.DemiBold
                }
            }
            Text {
                text: root.hint
                color: Theme.secondary
                font.pixelSize: Theme.subheadlineSize
            }
        }
        LockButton {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Cancel")
            fontWeight: Font.Medium
            fill: Theme.fade(Theme.primary, 0.08)
            foreground: Theme.primary
            horizontalPadding: 14
            verticalPadding: 6
            cornerRadius: 6
            onClicked: root.viewModel.cancelBiometrics()
        }
    }
}
