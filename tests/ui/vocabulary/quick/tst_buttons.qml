import QtQuick
import QtTest
import Quillbay.Vocabulary

Item {
    id: root

    width: 300
    height: 200

    PrimaryButtonStyle {
        id: primary

        x: 20
        y: 20
        text: "Done"
    }
    GhostButtonStyle {
        id: ghost

        x: 150
        y: 20
        text: "Select All"
        compact: true
    }
    DestructiveButtonStyle {
        id: destructive

        x: 20
        y: 100
        text: "Delete"
        enabled: false
    }
    SignalSpy {
        id: clicks

        signalName: "clicked"
    }

    TestCase {
        name: "Buttons"
        when: windowShown

        function init() {
            clicks.target = primary;
            clicks.clear();
        }

        function test_pressShrinksAndReleaseClicks() {
            mousePress(primary);
            verify(primary.pressed);
            tryCompare(primary, "scale", 0.97);
            compare(clicks.count, 0);
            mouseRelease(primary);
            compare(clicks.count, 1);
            tryCompare(primary, "scale", 1);
        }

        function test_leavingBeforeReleaseIsNoClick() {
            mousePress(primary);
            mouseMove(root, 290, 190);
            verify(!primary.pressed);
            mouseRelease(root, 290, 190);
            compare(clicks.count, 0);
        }

        function test_keyboard() {
            primary.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Enter);
            compare(clicks.count, 2);
            keyPress(Qt.Key_Space);
            verify(primary.pressed);
            compare(clicks.count, 2);
            keyRelease(Qt.Key_Space);
            compare(clicks.count, 3);
            keyClick(Qt.Key_Escape);
            compare(clicks.count, 3);

            keyPress(Qt.Key_Space);
            keyClick(Qt.Key_Tab);
            verify(ghost.activeFocus, "the tab order goes on");
            verify(!primary.pressed);
            keyRelease(Qt.Key_Space);
            compare(clicks.count, 3, "what was held down and left is no click");
            keyClick(Qt.Key_Tab);
            verify(!destructive.activeFocus, "a disabled button takes no keyboard");
        }

        function test_disabled() {
            clicks.target = destructive;
            mouseClick(destructive);
            compare(clicks.count, 0);
        }

        // Padding is around the text: 18 and 9, compact 8 and 4.
        function test_sizes() {
            const label = measure.createObject(root, {text: "Done", pixelSize: 13, weight: Font.DemiBold}) as Text;
            compare(primary.width, Math.ceil(label.implicitWidth + 36));
            compare(primary.height, Math.ceil(label.implicitHeight + 18));
            const small = measure.createObject(root, {text: "Select All", pixelSize: 10, weight: Font.Medium}) as Text;
            compare(ghost.width, Math.ceil(small.implicitWidth + 16));
            compare(ghost.height, Math.ceil(small.implicitHeight + 8));
            label.destroy();
            small.destroy();
        }
    }

    Component {
        id: measure

        Text {
            property alias pixelSize: text.font.pixelSize
            property alias weight: text.font.weight

            id: text
        }
    }
}
