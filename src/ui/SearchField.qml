pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The field that filters the grid as one types. */
Panel {
    id: root

    readonly property color ink: Theme.dark ? "white" : Theme.primary

    /*! Gives the field the keyboard, also where it already has been asked to. */
    function requestFocus() {
        field.requestFocus();
    }

    implicitWidth: 16 + glyph.width + 12 + (600 + 16) + 12 + trailing.width + 16
    implicitHeight: field.implicitHeight + 20
    radius: 12
    color: Theme.dark ? Qt.rgba(0, 0, 0, 0.3) : Theme.fade(Theme.primary, 0.06)
    stroke: Theme.dark ? Qt.rgba(1, 1, 1, 0.1) : Theme.fade(Theme.primary, 0.12)

    Symbol {
        id: glyph
        anchors {
            left: parent.left
            leftMargin: 16
            verticalCenter: parent.verticalCenter
        }
        name: "magnifyingglass"
        size: 16
        color: root.ink
        opacity: 0.6
    }

    CustomTextField {
        id: field
        anchors {
            left: glyph.right
            leftMargin: 12 + 8
            right: trailing.left
            rightMargin: 12 + 8
            verticalCenter: parent.verticalCenter
        }
        text: ViewModel.searchQuery
        placeholder: qsTr("Search Apps...")
        onTextEdited: ViewModel.searchQuery = text
    }

    Item {
        id: trailing
        anchors {
            right: parent.right
            rightMargin: 16
            verticalCenter: parent.verticalCenter
        }
        width: Math.max(hint.width, clear.width)
        height: parent.height

        ShortcutHint {
            id: hint
            anchors {
                right: parent.right
                verticalCenter: parent.verticalCenter
            }
            visible: field.text.length === 0
            sequence: "Ctrl+K"
            ink: root.ink
        }
        ClearButton {
            id: clear
            anchors {
                right: parent.right
                verticalCenter: parent.verticalCenter
            }
            visible: field.text.length > 0
            ink: root.ink
            onClicked: {
                ViewModel.searchQuery = "";
                ViewModel.updateFilteredApps();
                field.requestFocus();
            }
        }
    }
}
