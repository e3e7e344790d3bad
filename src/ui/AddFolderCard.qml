pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The card that makes a folder. */
Item {
    id: root

    property bool focused: false

    function press() {
        Library.createFolder(qsTr("New app folder"), "folder", Theme.defaultColor);
    }

    width: 260
    height: 190

    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Add Folder")
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.onPressAction: press()

    CardBacking {
        anchors.fill: parent
        dashed: true
    }
    Column {
        anchors.centerIn: parent
        spacing: 12
        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "plus.circle.fill"
            size: 40
            color: Theme.dark ? Theme.fade(Theme.blue, 0.8) : Theme.blue
        }
        Text {
            text: qsTr("Add Folder")
            color: Theme.dark ? Qt.rgba(1, 1, 1, 0.9) : Theme.fade(Theme.primary, 0.85)
            font {
                pixelSize: 16
                weight: Font.Bold
            }
        }
    }
    FocusRing {
        cornerRadius: Theme.cardRadius
        visible: root.focused
    }
    MouseArea {
        anchors.fill: parent
        onClicked: root.press()
    }
}
