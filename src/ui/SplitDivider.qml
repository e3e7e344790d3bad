pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! The line between the sidebar and the rest. It can be dragged, and moved by the arrows; a double click or Return puts it
    back. */
Rectangle {
    id: root

    required property int minimum
    required property int ideal
    required property int maximum
    required property int position

    /*! The user wants it there, which is within the limits. */
    signal moved(int position)

    function moveTo(wanted: int) {
        moved(Math.max(minimum, Math.min(maximum, wanted)));
    }

    x: position
    width: 1
    color: activeFocus ? Theme.focus : Theme.fade(Theme.primary, 0.1)
    activeFocusOnTab: true

    Accessible.role: Accessible.Splitter
    Accessible.name: qsTr("Sidebar width")
    Accessible.focusable: true
    Accessible.onIncreaseAction: moveTo(position + 8)
    Accessible.onDecreaseAction: moveTo(position - 8)

    Keys.onLeftPressed: moveTo(position - 8)
    Keys.onRightPressed: moveTo(position + 8)
    Keys.onReturnPressed: moveTo(ideal)
    Keys.onEnterPressed: moveTo(ideal)

    Rectangle {
        anchors {
            fill: parent
            leftMargin: -1
            rightMargin: -1
        }
        visible: root.activeFocus
        color: Theme.focus
    }
    MouseArea {
        property real grip: 0

        anchors {
            fill: parent
            leftMargin: -3
            rightMargin: -4
        }
        cursorShape: Qt.SplitHCursor
        onPressed: mouse => grip = mouse.x
        onPositionChanged: mouse => root.moveTo(root.position + Math.round(mouse.x - grip))
        onDoubleClicked: root.moveTo(root.ideal)
    }
}
