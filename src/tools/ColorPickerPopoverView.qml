pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Picks a colour of the screen, and shows those picked before. */
Popover {
    id: root

    title: qsTr("Color Picker")
    padding: 16
    contentWidth: 240 - 2 * padding
    contentHeight: content.implicitHeight
    Component.onCompleted: ColorPicker.begin()

    Column {
        id: content
        width: parent.width
        spacing: 12

        PopoverHeading {
            width: parent.width
            title: root.title
            message: ColorPicker.copyMessage
        }
        Text {
            width: parent.width
            text: qsTr("Capture any pixel on your desktop screen.")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.secondary
            font.pixelSize: 11
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Row {
            width: parent.width
            visible: ColorPicker.hexColor !== ""
            spacing: 10

            Rectangle {
                id: swatch
                width: 44
                height: 36
                radius: 10
                color: ColorHex.color(ColorPicker.hexColor)
                border.color: Theme.fade(Theme.primary, 0.15)
            }
            Rectangle {
                width: parent.width - swatch.width - parent.spacing
                height: swatch.height
                radius: 6
                color: Theme.fade(Theme.primary, 0.04)

                Text {
                    anchors.centerIn: parent
                    text: ColorPicker.hexColor
                    textFormat: Text.PlainText
                    color: Theme.primary
                    font {
                        family: Theme.monospacedFamily
                        pixelSize: 15
                        weight: Font.Medium
                    }
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
        SymbolPushButton {
            width: parent.width
            focus: true
            symbol: "eyedropper.halffull"
            text: qsTr("Pick Color")
            onClicked: ColorPicker.pick()
        }
        Column {
            width: parent.width
            visible: WorkspaceStorage.recentColors.length > 0
            spacing: 8

            RecentHeading {
                width: parent.width
                title: qsTr("Recent Colors")
                clearLabel: qsTr("Clear Recent Colors")
                onCleared: ColorPicker.clear()
            }
            ChoiceGrid {
                id: swatches

                readonly property var colors: WorkspaceStorage.recentColors

                title: qsTr("Recent Colors")
                columns: 8
                columnSpacing: (parent.width - 8 * 18) / 7
                rowSpacing: 8
                chosenIndex: colors.indexOf(ColorPicker.hexColor)
                model: colors
                delegate: RecentColor {
                    required property string modelData

                    grid: swatches
                    hex: modelData
                    onChosen: ColorPicker.choose(hex)
                }
            }
        }
    }
}
