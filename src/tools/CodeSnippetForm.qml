pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What a new snippet is to be. */
Rectangle {
    id: root

    required property CodeSnippets snippets

    function requestFocus() {
        titleField.requestFocus();
    }

    implicitHeight: content.implicitHeight + 20
    radius: 8
    color: Theme.fade(Theme.primary, 0.02)

    Column {
        id: content
        x: 10
        y: 10
        width: parent.width - 20
        spacing: 8

        ToolField {
            id: titleField
            width: parent.width
            placeholder: qsTr("Snippet Title (e.g. Fetch API)")
            text: root.snippets.newTitle
            onEdited: text => root.snippets.newTitle = text
            onAccepted: root.snippets.saveForm()
        }
        ToolField {
            width: parent.width
            placeholder: qsTr("Language (e.g. JavaScript)")
            text: root.snippets.newLanguage
            onEdited: text => root.snippets.newLanguage = text
            onAccepted: root.snippets.saveForm()
        }
        PlainEditor {
            width: parent.width
            height: 80
            label: qsTr("Code")
            value: root.snippets.newCode
            inset: 6
            radius: 6
            fill: Theme.fade(Theme.primary, 0.04)
            font {
                family: Theme.monospacedFamily
                pixelSize: 11
            }
            onEdited: text => root.snippets.newCode = text
        }
        ProminentButton {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Save Snippet")
            onClicked: root.snippets.saveForm()
        }
    }
}
