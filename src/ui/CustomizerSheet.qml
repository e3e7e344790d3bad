pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A sheet for the look of something: its title, the customiser inside, and the way out on either side. */
Sheet {
    id: root

    property string confirmText
    default property alias customizer: slot.data

    contentWidth: 280
    contentHeight: column.height

    Column {
        id: column
        width: parent.width
        spacing: 20

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            color: Theme.primary
            font {
                pixelSize: 16
                bold: true
            }
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Item {
            id: slot
            width: parent.width
            height: childrenRect.height
        }
        Item {
            width: parent.width
            height: confirm.height

            PlainButton {
                text: qsTr("Cancel")
                large: true
                fill: "transparent"
                stroke: "transparent"
                ink: Theme.secondary
                onClicked: root.close()
            }
            ProminentButton {
                id: confirm
                anchors.right: parent.right
                text: root.confirmText
                large: true
                onClicked: root.accepted()
            }
        }
    }
}
