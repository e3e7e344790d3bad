pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The active workspace's notes, one at a time. */
Popover {
    id: root

    readonly property StickyNotes notes: StickyNotes {
        storage: WorkspaceStorage
    }

    title: qsTr("Sticky Notes")
    padding: 16
    contentWidth: 280 - 2 * padding
    contentHeight: content.implicitHeight

    Column {
        id: content
        width: parent.width
        spacing: 12

        Item {
            width: parent.width
            height: buttons.height

            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: root.title
                textFormat: Text.PlainText
                color: Theme.secondary
                font {
                    pixelSize: 14
                    bold: true
                }
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Row {
                id: buttons
                anchors.right: parent.right
                spacing: 6

                SymbolButton {
                    symbol: "plus.circle.fill"
                    label: qsTr("New Note")
                    size: 16
                    ink: Theme.blue
                    onClicked: {
                        root.notes.add();
                        editor.forceActiveFocus(Qt.OtherFocusReason);
                    }
                }
                SymbolButton {
                    symbol: "trash.fill"
                    label: qsTr("Delete Note")
                    size: 14
                    ink: Theme.fade(Theme.red, 0.8)
                    enabled: root.notes.count > 0
                    onClicked: root.notes.removeActive()
                }
            }
        }

        Item {
            width: parent.width
            height: 180
            visible: root.notes.count === 0

            Column {
                anchors.centerIn: parent
                spacing: 10

                Symbol {
                    anchors.horizontalCenter: parent.horizontalCenter
                    name: "note.text.badge.plus"
                    size: 32
                    color: Theme.fade(Theme.secondary, 0.3)
                }
                Text {
                    text: qsTr("No notes found. Create one!")
                    textFormat: Text.PlainText
                    color: Theme.secondary
                    font.pixelSize: 12
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
        Column {
            width: parent.width
            spacing: 8
            visible: root.notes.count > 0

            Item {
                width: parent.width
                height: 140

                FloatShadow {
                    anchors.fill: parent
                    radius: 12
                    blur: 4
                    offset: 1
                    color: Qt.rgba(0, 0, 0, 0.08)
                }
                PlainEditor {
                    id: editor
                    anchors.fill: parent
                    focus: true
                    label: qsTr("Note")
                    value: root.notes.text
                    readOnly: !root.notes.hasActive
                    ink: "black"
                    fill: ColorHex.color(root.notes.colorHex)
                    radius: 12
                    onEdited: text => root.notes.text = text
                }
            }
            Item {
                width: parent.width
                height: pager.height

                ChoiceGrid {
                    id: swatches

                    readonly property var choices: root.notes.colors

                    anchors.verticalCenter: parent.verticalCenter
                    title: qsTr("Color")
                    columns: choices.length
                    spacing: 8
                    chosenIndex: choices.findIndex(choice => choice.hex === root.notes.colorHex)
                    model: choices
                    delegate: NoteSwatch {
                        required property var modelData

                        grid: swatches
                        hex: modelData.hex
                        label: modelData.name
                        onChosen: root.notes.colorHex = hex
                    }
                }
                Row {
                    id: pager
                    anchors.right: parent.right
                    spacing: 4

                    SymbolButton {
                        symbol: "chevron.left"
                        label: qsTr("Previous Note")
                        size: 11
                        enabled: root.notes.activeIndex > 0
                        onClicked: root.notes.showPrevious()
                    }
                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: qsTr("%1 / %2").arg(root.notes.activeIndex + 1).arg(root.notes.count)
                        textFormat: Text.PlainText
                        color: Theme.secondary
                        font.pixelSize: 11
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                    SymbolButton {
                        symbol: "chevron.right"
                        label: qsTr("Next Note")
                        size: 11
                        enabled: root.notes.activeIndex !== root.notes.count - 1
                        onClicked: root.notes.showNext()
                    }
                }
            }
        }
    }
}
