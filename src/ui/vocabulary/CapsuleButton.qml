pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

// What the button styles have in common. A style gives the padding, the text's look and, as `background`, the fill.
Item {
    id: root

    property string text
    property string symbol
    property color foreground: Theme.primary
    property int fontSize: 13
    property int fontWeight: Font.DemiBold
    property bool underlined: false
    property int symbolSize: root.fontSize
    property alias spacing: label.spacing
    property real horizontalPadding: 16
    property real verticalPadding: 9
    property real cornerRadius: root.height / 2
    property alias background: backdrop.data

    readonly property bool pressed: mouse.containsPress || root.keyHeld
    // 0 at rest, 1 held down, between them while it moves.
    property real pressProgress: root.pressed ? 1 : 0
    property bool keyHeld: false

    signal clicked

    function click() {
        if (root.enabled)
            root.clicked();
    }

    implicitWidth: Math.ceil(label.implicitWidth + 2 * root.horizontalPadding)
    implicitHeight: Math.ceil(label.implicitHeight + 2 * root.verticalPadding)
    scale: 1 - 0.03 * root.pressProgress
    opacity: root.enabled ? 1 : 0.5
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: root.text
    Accessible.focusable: true
    Accessible.pressed: root.pressed
    Accessible.onPressAction: root.click()

    Behavior on pressProgress {
        NumberAnimation {
            duration: 150 * Theme.motion
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Theme.easeOut
        }
    }

    Keys.onPressed: event => {
        if (event.key === Qt.Key_Space) {
            event.accepted = true;
            if (!event.isAutoRepeat)
                root.keyHeld = true;
        } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
            event.accepted = true;
            if (!event.isAutoRepeat)
                root.click();
        }
    }
    Keys.onReleased: event => {
        if (event.key === Qt.Key_Space && !event.isAutoRepeat && root.keyHeld) {
            event.accepted = true;
            root.keyHeld = false;
            root.click();
        }
    }
    onActiveFocusChanged: if (!root.activeFocus)
        root.keyHeld = false

    Item {
        id: backdrop

        anchors.fill: parent
    }

    Row {
        id: label

        anchors.centerIn: parent
        spacing: 6

        Symbol {
            name: root.symbol
            visible: root.symbol !== ""
            size: root.symbolSize
            weight: root.fontWeight
            color: root.foreground
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: root.text
            textFormat: Text.PlainText
            color: root.foreground
            font.pixelSize: root.fontSize
            font.weight: root.fontWeight
            font.underline: root.underlined
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    MouseArea {
        id: mouse

        anchors.fill: parent
        onClicked: root.click()
    }

    FocusRing {
        cornerRadius: root.cornerRadius
    }
}
