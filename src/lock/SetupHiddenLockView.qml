pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Lock
import Quillbay.Vocabulary

/*! In the place of the hidden list while there is no password: asks for one. */
LockScreen {
    id: root

    function submit() {
        if (password.password === "") {
            errorMessage = qsTr("Password cannot be empty");
        } else if (password.password !== confirmPassword.password) {
            errorMessage = qsTr("Passwords do not match");
        } else {
            viewModel.setSecurityPassword(password.password, useTouchID.checked, (success, message) => {
                if (!success)
                    root.errorMessage = message || Wording.of(qsTr("Touch ID registration failed"));
            });
        }
    }

    symbol: "lock.shield"
    title: qsTr("Secure Hidden Items")
    explanation: qsTr("Set a password to protect your hidden apps and folders.")
    explanationWidth: 320

    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 12

        SecureField {
            id: password
            width: 260
            focus: true
            placeholder: qsTr("Enter Password")
        }
        SecureField {
            id: confirmPassword
            width: 260
            placeholder: qsTr("Confirm Password")
        }
    }
    LockCheckBox {
        id: useTouchID
        anchors.horizontalCenter: parent.horizontalCenter
        text: Wording.of(qsTr("Enable Touch ID / Apple Watch Unlock"))
    }
    LockMessage {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.errorMessage
    }
    LockButton {
        anchors.horizontalCenter: parent.horizontalCenter
        text: qsTr("Set Password & Enable Lock")
        onClicked: root.submit()
    }
}
