pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Name, icon and colour of something that the user makes, with a look at how they go together. Changes nothing but its
    own properties. */
Column {
    id: root

    property string name
    /*! Name of a system symbol. */
    property string selectedIcon
    /*! As it is stored. */
    property string selectedColor
    required property string prompt
    /*! Names of the system symbols to choose from. */
    required property var icons

    readonly property color tint: ColorHex.color(selectedColor)

    function focusName() {
        field.requestFocus();
        field.selectAll();
    }

    width: 280
    spacing: 20
    onSelectedIconChanged: preview.arrive()

    Rectangle {
        id: preview

        property color tint: root.tint

        function arrive() {
            glyph.scale = 0.8;
            arrival.restart();
        }

        anchors.horizontalCenter: parent.horizontalCenter
        width: 90
        height: 90
        radius: 24
        color: Theme.fade(tint, 0.12)
        border.color: Theme.fade(tint, 0.2)

        Behavior on tint {
            SpringMotion {
                response: 0.35
                dampingFraction: 0.7
            }
        }
        Symbol {
            id: glyph
            anchors.centerIn: parent
            name: root.selectedIcon
            size: 40
            color: preview.tint
        }
        SpringMotion {
            id: arrival
            target: glyph
            property: "scale"
            to: 1
            response: 0.35
            dampingFraction: 0.7
        }
    }

    Rectangle {
        width: parent.width
        height: field.implicitHeight + 12
        radius: 10
        color: Theme.fade(Theme.primary, 0.04)

        CustomTextField {
            id: field
            anchors {
                fill: parent
                leftMargin: 16
                rightMargin: 16
            }
            text: root.name
            placeholder: root.prompt
            font.pixelSize: 18
            font.bold: true
            horizontalAlignment: TextInput.AlignHCenter
            onTextEdited: root.name = text
        }
    }

    ChoiceGrid {
        id: colors

        readonly property var presets: Theme.presetColors

        anchors.horizontalCenter: parent.horizontalCenter
        title: qsTr("Color")
        columns: presets.length
        spacing: 12
        chosenIndex: presets.findIndex(preset => preset.hex === root.selectedColor)
        model: presets
        delegate: SwatchButton {
            required property var modelData

            grid: colors
            hex: modelData.hex
            label: modelData.name
            onChosen: root.selectedColor = hex
        }
    }

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: glyphs.width + 32
        height: glyphs.height + 32
        radius: 16
        color: Theme.fade(Theme.primary, 0.02)
        border.color: Theme.fade(Theme.primary, 0.06)

        ChoiceGrid {
            id: glyphs
            x: 16
            y: 16
            title: qsTr("Icon")
            columns: 5
            spacing: 12
            chosenIndex: root.icons.indexOf(root.selectedIcon)
            model: root.icons
            delegate: IconCell {
                required property string modelData

                grid: glyphs
                symbol: modelData
                tint: root.tint
                onChosen: root.selectedIcon = symbol
            }
        }
    }
}
