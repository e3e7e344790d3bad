pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! The small text that tells what the pointer rests on. Give it the item and its text; without an item it goes. */
Rectangle {
    id: root

    property Item target: null
    property string text

    function place() {
        const below = root.target.mapToItem(root.parent, root.target.width / 2, root.target.height);
        x = Math.max(4, Math.min(root.parent.width - width - 4, below.x - width / 2));
        y = Math.min(root.parent.height - height - 4, below.y + 2);
        visible = true;
    }

    onTargetChanged: {
        visible = false;
        if (target)
            delay.restart();
        else
            delay.stop();
    }

    width: label.implicitWidth + 16
    height: label.implicitHeight + 8
    radius: 6
    visible: false
    color: Theme.mix(Theme.windowBackground, "white", Theme.dark ? 0.08 : 0.85)
    border.color: Theme.fade(Theme.primary, 0.15)

    Accessible.role: Accessible.ToolTip
    Accessible.name: text

    Text {
        id: label
        anchors.centerIn: parent
        text: root.text
        textFormat: Text.PlainText
        color: Theme.primary
        font.pixelSize: 11
    }
    Timer {
        id: delay
        interval: 1000
        onTriggered: root.place()
    }
}
