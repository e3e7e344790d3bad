pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Asks before a folder is deleted. The keyboard begins on the way out. */
Sheet {
    id: root

    property string folder
    property string name

    /*! `entry` is what the library says of the folder. */
    function openFor(doomed: string, entry: var) {
        if (!("name" in entry))
            return;
        folder = doomed;
        name = entry.name;
        cancel.focus = true;
        open();
    }

    title: qsTr("Delete Folder")
    contentWidth: 260
    contentHeight: column.height

    Column {
        id: column
        width: parent.width
        spacing: 8

        Text {
            width: parent.width
            text: root.title
            horizontalAlignment: Text.AlignHCenter
            color: Theme.primary
            font {
                pixelSize: 14
                bold: true
            }
        }
        Text {
            width: parent.width
            bottomPadding: 10
            text: qsTr("Are you sure you want to delete '%1'? This action cannot be undone.").arg(root.name)
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 8
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignHCenter
            color: Theme.secondary
            font.pixelSize: 12
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Row {
            spacing: 10

            PlainButton {
                id: cancel
                width: (column.width - 10) / 2
                text: qsTr("Cancel")
                large: true
                onClicked: root.close()
            }
            PushButton {
                width: cancel.width
                text: qsTr("Delete")
                large: true
                fill: Theme.red
                ink: "white"
                onClicked: {
                    Library.deleteFolder(root.folder);
                    root.close();
                }
            }
        }
    }
}
