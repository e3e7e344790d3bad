pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A question or a message that must be answered. The keyboard begins on the way out, and Return takes it. Opens as it is
    made. */
Sheet {
    id: root

    property string message
    /*! One line each, below the message. */
    property list<string> items
    property string dismissText: qsTr("Cancel")
    /*! Without one there is only the way out. */
    property string confirmText

    property bool isConfirmed: false

    /*! Either comes once the alert is gone. */
    signal confirmed
    signal dismissed

    // The buttons are of one width, which holds the longer text.
    contentWidth: Math.max(root.items.length > 0 ? 340 : 280, 2 * Math.ceil(Math.max(dismissal.implicitWidth, confirmation.implicitWidth)) + 10)
    contentHeight: column.height
    onAccepted: close()
    onClosed: isConfirmed ? confirmed() : dismissed()
    Component.onCompleted: {
        dismissal.focus = true;
        open();
    }

    Column {
        id: column
        width: parent.width
        spacing: 8

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.primary
            font {
                pixelSize: 14
                bold: true
            }
        }
        Text {
            width: parent.width
            bottomPadding: root.items.length > 0 ? 2 : 10
            text: root.message
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 14
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignHCenter
            color: Theme.secondary
            font.pixelSize: 12
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Loader {
            width: parent.width
            active: root.items.length > 0
            visible: active
            source: "AlertItems.qml"
            onLoaded: (item as AlertItems).model = root.items
        }
        Row {
            width: parent.width
            topPadding: root.items.length > 0 ? 6 : 0
            spacing: 10

            PlainButton {
                id: dismissal
                width: confirmation.visible ? (column.width - 10) / 2 : column.width
                text: root.dismissText
                large: true
                onClicked: root.close()
            }
            PushButton {
                id: confirmation
                width: dismissal.width
                visible: root.confirmText !== ""
                text: root.confirmText
                large: true
                fill: Theme.red
                ink: "white"
                onClicked: {
                    root.isConfirmed = true;
                    root.close();
                }
            }
        }
    }
}
