import QtQuick
import Quillbay.Vocabulary

Column {
    id: root

    required property list<string> names

    padding: 24
    spacing: 20
    width: 720

    Row {
        spacing: 16

        PrimaryButtonStyle {
            text: "Done"
        }
        PrimaryButtonStyle {
            text: "Move to Trash"
            symbol: "trash.fill"
        }
        PrimaryButtonStyle {
            text: "Pressed"
            keyHeld: true
        }
        PrimaryButtonStyle {
            text: "Disabled"
            enabled: false
        }
        PrimaryButtonStyle {
            text: "Keyboard"
            focus: true
        }
    }
    Row {
        spacing: 16

        DestructiveButtonStyle {
            text: "Delete Permanently"
            symbol: "trash"
        }
        DestructiveButtonStyle {
            text: "Pressed"
            keyHeld: true
        }
        GhostButtonStyle {
            text: "Cancel"
        }
        GhostButtonStyle {
            text: "Pressed"
            keyHeld: true
        }
        GhostButtonStyle {
            text: "Deselect All"
            compact: true
        }
    }
    Repeater {
        model: ["", "calculator with a text that is much too long for the field it stands in, so it scrolls"]

        Rectangle {
            id: frame

            required property string modelData

            width: 420
            height: field.implicitHeight + 20
            radius: Theme.fieldRadius
            color: Theme.fade(Theme.primary, 0.06)
            border.color: Theme.fade(Theme.primary, 0.12)

            Symbol {
                id: glass

                x: 16
                anchors.verticalCenter: parent.verticalCenter
                name: "magnifyingglass"
                size: 16
                weight: Font.Medium
                color: Theme.fade(Theme.primary, 0.6)
            }
            CustomTextField {
                id: field

                anchors.left: glass.right
                anchors.right: parent.right
                anchors.margins: 12
                anchors.verticalCenter: parent.verticalCenter
                placeholder: "Search Apps..."
                text: frame.modelData
                Component.onCompleted: if (text !== "")
                    selectAll()
            }
        }
    }
    Row {
        spacing: 8

        Repeater {
            model: [Theme.blue, Theme.red, Theme.green, Theme.orange, Theme.yellow, Theme.purple, Theme.pink, Theme.cyan,
                Theme.gray]

            Rectangle {
                required property color modelData

                width: 32
                height: 32
                radius: 8
                color: modelData
            }
        }
    }
    Row {
        spacing: 8

        Repeater {
            model: ["sidebar", "thin", "ultraThin"]

            VisualEffectView {
                id: view

                required property string modelData

                width: 120
                height: 60
                radius: 12
                material: modelData

                Text {
                    anchors.centerIn: parent
                    text: view.modelData
                    color: Theme.primary
                    font.pixelSize: Theme.bodySize
                }
            }
        }
        Symbol {
            name: "plus.circle"
            size: 80
            weight: Font.Light
            color: Theme.fade(Theme.secondary, 0.5)
        }
        Symbol {
            name: "plus.circle.fill"
            size: 40
            color: Theme.blue
        }
        Symbol {
            name: "xmark.circle.fill"
            size: 20
            color: Theme.fade(Theme.primary, 0.3)
        }
    }
}
