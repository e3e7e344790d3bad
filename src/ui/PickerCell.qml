pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! An application to select. What is in the folder already cannot be. */
Item {
    id: root

    required property int index
    required property string name
    required property string path
    required property bool isSelected
    required property bool isInFolder
    /*! Whether it has the keyboard. */
    property bool focused: false

    signal toggled

    // A cell that waits for its next application is not there for anyone, screen readers included.
    visible: index >= 0
    enabled: !isInFolder
    implicitHeight: column.height + 20

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.description: isInFolder ? qsTr("Already in the folder") : ""
    Accessible.focusable: !isInFolder
    Accessible.focused: focused
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: toggled()
    Accessible.onToggleAction: toggled()

    Rectangle {
        anchors.fill: column
        anchors.margins: -10
        radius: 16
        color: root.isSelected ? Theme.fade(Theme.blue, 0.1) : "transparent"
        scale: area.pressed ? 0.97 : 1

        FocusRing {
            cornerRadius: 16
            visible: root.focused
        }
    }

    Column {
        id: column
        x: 10
        y: 10
        width: root.width - 20
        spacing: 8
        opacity: area.pressed ? 0.75 : 1

        Item {
            id: block
            anchors.horizontalCenter: parent.horizontalCenter
            width: 56
            height: 56

            FloatShadow {
                anchors.fill: parent
                visible: root.isSelected
                radius: 14
                blur: 8
                offset: 0
                color: Theme.fade(Theme.blue, 0.4)
            }
            RoundedIcon {
                anchors.fill: parent
                path: root.path
                radius: 14
                grey: root.isInFolder ? 0.8 : 0
                opacity: root.isInFolder ? 0.4 : 1
            }
            // The line's middle is on the icon's edge.
            Rectangle {
                anchors.fill: parent
                anchors.margins: -1.5
                visible: root.isSelected
                radius: 15.5
                color: "transparent"
                border.color: Theme.blue
                border.width: 3
            }
            Rectangle {
                id: badge
                anchors {
                    horizontalCenter: parent.right
                    horizontalCenterOffset: -4
                    verticalCenter: parent.top
                    verticalCenterOffset: 4
                }
                width: 18
                height: 18
                radius: 9
                visible: root.isSelected || root.isInFolder
                color: "white"

                Symbol {
                    anchors.centerIn: parent
                    name: root.isSelected ? "plus.circle.fill" : "checkmark.circle.fill"
                    size: 17
                    color: root.isSelected ? Theme.blue : Theme.gray
                }
            }
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            width: root.width - 8
            text: root.name
            textFormat: Text.PlainText
            color: root.isSelected ? Theme.blue : root.isInFolder ? Theme.secondary : Theme.primary
            opacity: root.isInFolder ? 0.5 : 1
            font {
                pixelSize: 11
                weight: root.isSelected ? Font.Bold : Font.Medium
            }
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
        }
    }

    MouseArea {
        id: area
        anchors.fill: parent
        onClicked: root.toggled()
    }
}
