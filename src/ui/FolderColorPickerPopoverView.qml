pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Gives a folder another colour; each choice holds at once. */
Popover {
    id: root

    required property string folderId
    readonly property var folder: Library.folder(folderId)

    side: Popover.Side.Right
    title: qsTr("Select Folder Color")
    contentWidth: 200 - 2 * padding
    contentHeight: content.implicitHeight

    FolderColorEditor {
        id: editor
        folderColor: root.folder.color ?? Theme.defaultColor
        onChosen: color => Library.setFolderColor(root.folderId, color)
    }

    Column {
        id: content
        width: parent.width
        spacing: 12

        Text {
            text: root.title
            textFormat: Text.PlainText
            color: Theme.secondary
            font {
                pixelSize: 13
                bold: true
            }
        }
        ColorWheelControl {
            anchors.horizontalCenter: parent.horizontalCenter
            editor: editor
        }
        Row {
            spacing: 8

            Text {
                anchors.verticalCenter: parent.verticalCenter
                width: 32
                text: qsTr("HEX:")
                color: Theme.secondary
                font {
                    pixelSize: 10
                    bold: true
                }
            }
            SmallField {
                anchors.verticalCenter: parent.verticalCenter
                width: 80
                label: qsTr("Hex value")
                prompt: "#FFFFFF"
                text: editor.hexText
                onEdited: text => editor.hexText = text
                onAccepted: editor.handleHexInput()
            }
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 44
                height: 20
                radius: 6
                color: editor.current
                border.color: Theme.fade(Theme.primary, 0.15)
            }
        }
        Row {
            width: parent.width
            spacing: 8

            ComponentField {
                letter: qsTr("R")
                label: qsTr("Red")
                text: editor.rText
                onEdited: text => editor.rText = text
                onAccepted: editor.handleRGBAInput()
            }
            ComponentField {
                letter: qsTr("G")
                label: qsTr("Green")
                text: editor.gText
                onEdited: text => editor.gText = text
                onAccepted: editor.handleRGBAInput()
            }
            ComponentField {
                letter: qsTr("B")
                label: qsTr("Blue")
                text: editor.bText
                onEdited: text => editor.bText = text
                onAccepted: editor.handleRGBAInput()
            }
            ComponentField {
                letter: qsTr("A")
                label: qsTr("Alpha")
                text: editor.aText
                onEdited: text => editor.aText = text
                onAccepted: editor.handleRGBAInput()
            }
        }
        Rectangle {
            width: parent.width
            height: Theme.hairline
            color: Theme.fade(Theme.primary, 0.1)
        }
        ChoiceGrid {
            id: choice

            readonly property var presets: Theme.presetColors

            anchors.horizontalCenter: parent.horizontalCenter
            title: qsTr("Color")
            columns: presets.length
            spacing: 10
            chosenIndex: presets.findIndex(preset => preset.hex === editor.folderColor)
            model: presets
            delegate: SwatchButton {
                required property var modelData

                grid: choice
                quiet: true
                diameter: 16
                hex: modelData.hex
                label: modelData.name
                onChosen: editor.choosePreset(hex)
            }
        }
    }

    component ComponentField: Column {
        id: component

        property string letter
        property alias label: field.label
        property alias text: field.text
        signal edited(string text)
        signal accepted

        width: (parent.width - 3 * 8) / 4
        spacing: 4

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: component.letter
            color: Theme.secondary
            font {
                pixelSize: 9
                bold: true
            }
        }
        SmallField {
            id: field
            width: parent.width
            fontSize: 10
            horizontalAlignment: TextInput.AlignHCenter
            onEdited: text => component.edited(text)
            onAccepted: component.accepted()
        }
    }
}
