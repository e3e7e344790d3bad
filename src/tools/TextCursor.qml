pragma ComponentBehavior: Bound

import QtQuick

/*! The cursor of an editor. It blinks after each movement and key for as long as `blinkTime` says, in milliseconds, and
    then stands still. */
Rectangle {
    id: root

    required property TextEdit editor
    property int blinkTime: 10000
    readonly property bool isBlinking: timer.running

    width: 2
    visible: editor.activeFocus && timer.shown
    onXChanged: timer.begin()
    onYChanged: timer.begin()

    Connections {
        target: root.editor
        function onActiveFocusChanged() {
            timer.begin();
        }
    }
    Timer {
        id: timer

        property bool shown: true
        property int left: 0

        function begin() {
            shown = true;
            left = root.editor.activeFocus && interval > 0 ? Math.floor(root.blinkTime / interval) : 0;
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
