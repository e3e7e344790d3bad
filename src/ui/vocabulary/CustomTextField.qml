pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

// A bare line of text: no border, background or focus ring of its own; whoever frames it draws those. Keys that do
// not edit (up, down, return, escape) are left to the screen around it.
//
// `text` takes a binding and keeps it while the user types; `textEdited` is the way back. `isFocused` is a request
// for the keyboard: setting it asks for it, the end of editing clears it, and clearing it takes nothing away. Who
// wants to ask again while it is still set calls `requestFocus`.
FocusScope {
    id: root

    property alias text: input.text
    property alias font: input.font
    property alias horizontalAlignment: input.horizontalAlignment
    property alias ink: input.color
    property alias echoMode: input.echoMode
    property string placeholder
    // What the screen reader calls the field.
    property string label: root.placeholder
    // The text is nobody else's: whoever frames the field tells the screen reader of it instead. As a line of text the
    // toolkit would let it be read, also where it is left out of the tree.
    property bool unread: false
    property bool isFocused: false
    // How long after the last key the cursor goes on blinking, in milliseconds; then it stands still.
    property int blinkTime: 10000
    readonly property bool cursorBlinking: cursorTimer.running

    signal textEdited
    // Return was pressed; the key goes on to the screen around the field.
    signal accepted

    property bool focusPending: false

    function requestFocus() {
        root.isFocused = true;
        root.focusPending = true;
        Qt.callLater(root.takeFocus); // qmllint disable type
    }
    function takeFocus() {
        if (root.focusPending)
            input.forceActiveFocus();
        root.focusPending = false;
    }
    // A request made since the editing ended outlives its end.
    function endEditing() {
        if (!root.focusPending)
            root.isFocused = false;
    }
    function selectAll() {
        input.selectAll();
    }

    implicitWidth: 200
    implicitHeight: input.implicitHeight
    onIsFocusedChanged: {
        root.focusPending = root.isFocused;
        if (root.isFocused)
            Qt.callLater(root.takeFocus); // qmllint disable type
    }

    TextInput {
        id: input

        focus: true

        anchors.fill: parent
        clip: true
        color: Theme.primary
        selectionColor: Theme.selection
        selectedTextColor: Theme.primary
        font.pixelSize: 16
        verticalAlignment: TextInput.AlignVCenter
        selectByMouse: true
        activeFocusOnTab: true

        Accessible.role: root.unread ? Accessible.Client : Accessible.EditableText
        Accessible.name: root.label
        Accessible.ignored: root.unread

        onTextEdited: root.textEdited()
        onAccepted: root.accepted()
        onTextChanged: cursorTimer.begin()
        onCursorPositionChanged: cursorTimer.begin()
        onActiveFocusChanged: cursorTimer.begin()
        onEditingFinished: Qt.callLater(root.endEditing) // qmllint disable type

        cursorDelegate: Rectangle {
            width: 2
            color: Theme.blue
            visible: input.activeFocus && cursorTimer.shown
        }

        Text {
            anchors.fill: parent
            text: root.placeholder
            textFormat: Text.PlainText
            color: Theme.placeholder
            font: input.font
            elide: Text.ElideRight
            horizontalAlignment: input.horizontalAlignment
            verticalAlignment: Text.AlignVCenter
            visible: input.length === 0 && input.preeditText === ""
        }
    }

    Timer {
        id: cursorTimer

        property bool shown: true
        property int left: 0

        function begin() {
            shown = true;
            left = input.activeFocus && interval > 0 ? Math.floor(root.blinkTime / interval) : 0;
            if (left > 0)
                restart();
            else
                stop();
        }

        interval: Math.floor(Application.styleHints.cursorFlashTime / 2)
        repeat: true
        onTriggered: {
            left -= 1;
            shown = left <= 0 || !shown;
            if (left <= 0)
                stop();
        }
    }
}
