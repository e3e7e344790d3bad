pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! The line between the sidebar and the rest. It can be dragged; a double click puts it back. */
Rectangle {
    id: root

    required property int minimum
    required property int ideal
    required property int maximum
    property int position: ideal

    x: position
    width: 1
    color: Theme.fade(Theme.primary, 0.1)

    Accessible.role: Accessible.Splitter
    Accessible.name: qsTr("Sidebar width")

    MouseArea {
        property real grip: 0

        anchors {
            fill: parent
            leftMargin: -3
            rightMargin: -4
        }
        cursorShape: Qt.SplitHCursor
        onPressed: mouse => grip = mouse.x
        onPositionChanged: mouse => {
            const wanted = root.position + Math.round(mouse.x - grip);
            root.position = Math.max(root.minimum, Math.min(root.maximum, wanted));
        }
        onDoubleClicked: root.position = root.ideal
    }
}
