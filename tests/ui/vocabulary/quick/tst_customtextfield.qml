import QtQuick
import QtTest
import Quillbay.Vocabulary

Item {
    id: root

    property string query: "start"
    property var passed: []

    width: 300
    height: 200
    Keys.onPressed: event => root.passed.push(event.key)

    CustomTextField {
        id: field

        width: 200
        text: root.query
        placeholder: "Search"
        onTextEdited: root.query = text
    }
    TextInput {
        id: other

        y: 60
        width: 200
    }

    TestCase {
        name: "CustomTextField"
        when: windowShown

        function init() {
            other.forceActiveFocus();
            tryCompare(field, "isFocused", false);
            root.query = "start";
            root.passed = [];
        }

        function hasKeyboard() {
            return !other.activeFocus && root.Window.activeFocusItem !== null
                    && root.Window.activeFocusItem.parent === field;
        }

        function test_textGoesBothWays() {
            field.requestFocus();
            tryVerify(() => hasKeyboard());
            keyClick(Qt.Key_End);
            keyClick(Qt.Key_X);
            compare(root.query, "startx");
            root.query = "other";
            compare(field.text, "other", "typing kept the binding");
            keyClick(Qt.Key_Home);
            root.query = "other";
            keyClick(Qt.Key_A);
            compare(root.query, "aother", "an equal text leaves the cursor where it is");
        }

        function test_requestIsServedOnTheNextTurn() {
            field.isFocused = true;
            verify(!hasKeyboard());
            tryVerify(() => hasKeyboard());
            verify(field.isFocused);
        }

        function test_requestTakenBackInTimeIsNone() {
            field.isFocused = true;
            field.isFocused = false;
            other.text = "";
            wait(0);
            verify(other.activeFocus);
        }

        function test_endOfEditingClearsTheRequest() {
            field.requestFocus();
            tryVerify(() => hasKeyboard());
            other.forceActiveFocus();
            verify(field.isFocused, "not before the next turn");
            tryCompare(field, "isFocused", false);
            field.isFocused = true;
            tryVerify(() => hasKeyboard(), 5000, "it can be asked again");
        }

        function test_requestIsArmedAgain() {
            field.requestFocus();
            tryVerify(() => hasKeyboard());
            other.forceActiveFocus();
            field.requestFocus();
            tryVerify(() => hasKeyboard(), 5000, "a request outlives the end of editing before it");
            verify(field.isFocused);
        }

        function test_keysWithoutMeaningPassThrough() {
            field.requestFocus();
            tryVerify(() => hasKeyboard());
            const keys = [Qt.Key_Up, Qt.Key_Down, Qt.Key_Return, Qt.Key_Enter, Qt.Key_Escape];
            for (const key of keys)
                keyClick(key);
            compare(root.passed, keys);
            compare(root.query, "start");
        }

        function test_oneLine() {
            field.requestFocus();
            tryVerify(() => hasKeyboard());
            root.query = "a long text that does not fit into two hundred pixels at this size";
            compare(field.implicitHeight, field.height);
            keyClick(Qt.Key_End);
            const input = root.Window.activeFocusItem as TextInput;
            verify(input.cursorRectangle.x <= field.width, "the text scrolls with the cursor");
        }
    }
}
