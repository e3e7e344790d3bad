pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Gives a folder another icon; each choice holds at once. */
Popover {
    id: root

    required property string folderId
    property var folder: Library.folder(folderId)
    property bool isFilled: (folder.icon ?? "").endsWith(".fill")

    side: Popover.Side.Right
    title: qsTr("Select Folder Icon")
    contentWidth: 360 - 2 * padding
    contentHeight: content.implicitHeight
    onAboutToShow: {
        const cell = icons.cellAt(icons.chosenIndex);
        if (cell)
            scroll.show(cell);
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
        SegmentedControl {
            width: parent.width
            title: qsTr("Form")
            options: [qsTr("Outline"), qsTr("Filled")]
            current: root.isFilled ? 1 : 0
            onChosen: index => root.isFilled = index === 1
        }
        SideScroll {
            id: scroll
            width: parent.width
            height: 165
            contentWidth: icons.width + 2 * icons.x
            reveal: icons.currentCell

            ChoiceGrid {
                id: icons

                readonly property var forms: IconChoices.forms(root.isFilled)

                // Room for the ring around what has the keyboard.
                x: 4
                y: Math.round((parent.height - height) / 2)
                title: root.title
                flow: Grid.TopToBottom
                rows: 4
                spacing: 8
                chosenIndex: forms.indexOf(root.folder.icon)
                model: forms
                delegate: IconCell {
                    required property string modelData

                    grid: icons
                    symbol: modelData
                    tint: ColorHex.color(root.folder.color ?? Theme.defaultColor)
                    edge: 32
                    cornerRadius: 8
                    symbolSize: 15
                    restOpacity: 0.8
                    onChosen: {
                        Library.setFolderIcon(root.folderId, symbol);
                        root.folder = Library.folder(root.folderId);
                    }
                }
            }
        }
    }
}
