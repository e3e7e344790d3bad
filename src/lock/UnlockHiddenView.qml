pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Lock
import Quillbay.Vocabulary

/*! In the place of the hidden list while it is locked: asks for the password, or for what the machine has instead. */
LockScreen {
    id: root

    function submitUnlock() {
        if (viewModel.checkPassword(passwordInput.password)) {
            errorMessage = "";
        } else {
            errorMessage = qsTr("Incorrect Password");
            passwordInput.selectAll();
        }
    }
    function resetPassword() {
        viewModel.resetPasswordUsingTouchID((success, message) => {
            if (!success)
                root.errorMessage = message || Wording.of(qsTr("Touch ID reset failed"));
        });
    }

    symbol: "lock.fill"
    title: qsTr("Hidden Items Locked")
    explanation: qsTr("Please authenticate to view hidden apps and folders.")

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 12

        SecureField {
            id: passwordInput
            anchors.verticalCenter: parent.verticalCenter
            width: 200
            focus: true
            placeholder: qsTr("Enter Password")
            onAccepted: root.submitUnlock()
        }
        LockButton {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Unlock")
            horizontalPadding: 16
            verticalPadding: 6
            cornerRadius: 6
            onClicked: root.submitUnlock()
        }
    }
    LockButton {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.viewModel.usesTouchID
        symbol: "touchid"
        text: Wording.of(qsTr("Use Touch ID"))
        symbolSize: 18
        fontSize: 12
        fontWeight: Font.Medium
        fill: Theme.fade(Theme.blue, 0.1)
        foreground: Theme.blue
        horizontalPadding: 12
        verticalPadding: 6
        onClicked: root.viewModel.tryTouchID()
        Component.onCompleted: {
            if (root.viewModel.usesTouchID)
                root.viewModel.tryTouchID();
        }
    }
    LockButton {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.viewModel.canUseBiometrics
        text: Wording.of(qsTr("Forgot Password? Reset with Touch ID"))
        fontSize: 11
        underlined: true
        fill: "transparent"
        foreground: Theme.secondary
        horizontalPadding: 4
        verticalPadding: 4
        cornerRadius: 4
        onClicked: root.resetPassword()
    }
    LockMessage {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.errorMessage
    }
}
