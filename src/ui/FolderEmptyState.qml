pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What a folder without applications shows. An application dropped on it goes into the folder. */
Item {
    id: root

    readonly property string folder: Library.selectedFolder

    Rectangle {
        anchors.centerIn: parent
        width: column.width + 80
        height: column.height + 80
        radius: Theme.cardRadius
        color: Theme.fade(Theme.primary, drop.containsDrag ? 0.08 : 0.03)
        border.color: Theme.fade(Theme.primary, 0.05)

        Column {
            id: column
            anchors.centerIn: parent
            spacing: 24

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "plus.circle"
                weight: Font.Light
                size: 80
                color: Theme.secondary
                opacity: 0.5
            }
            Column {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 8
                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("No apps in this folder")
                    color: Theme.secondary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    font {
                        pixelSize: 20
                        weight: Font.DemiBold
                    }
                }
                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("Add new apps below to get started")
                    color: Theme.secondary
                    opacity: 0.8
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    font.pixelSize: Theme.subheadlineSize
                }
            }
            FilledButton {
                anchors.horizontalCenter: parent.horizontalCenter
                symbol: "plus"
                text: qsTr("Add Apps")
                onClicked: Library.openPicker(root.folder)
            }
        }
    }

    DropArea {
        id: drop
        anchors.fill: parent
        onEntered: drag => {
            drag.accepted = drag.hasUrls || GridDrops.takesText(drag.text);
        }
        onDropped: drop => {
            drop.accepted = GridDrops.dropTextOnFolder(drop.hasUrls ? drop.urls[0].toString() : drop.text, root.folder);
        }
    }
}
