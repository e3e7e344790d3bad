pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! What stays, and why. */
Rectangle {
    id: root

    /*! Of all that stays; the messages are those shown. */
    required property int count
    required property var messages

    implicitHeight: column.height + 24
    radius: 10
    color: Theme.fade(Theme.orange, 0.08)

    Column {
        id: column
        x: 12
        y: 12
        width: parent.width - 24
        spacing: 4

        Text {
            width: parent.width
            text: qsTr("%1 item(s) could not be removed:").arg(root.count)
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.orange
            font {
                pixelSize: 12
                weight: Font.DemiBold
            }
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Repeater {
            model: root.messages

            Text {
                required property string modelData
                width: column.width
                text: qsTr("• %1").arg(modelData)
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
                color: Theme.secondary
                font.pixelSize: 11
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
