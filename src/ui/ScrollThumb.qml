pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What is to be seen of a `ThinScrollBar`, and what the pointer does with it. */
MouseArea {
    id: root

    required property ThinScrollBar bar
    /*! Where the thumb was taken, from its top. */
    property real grip: 0
    property real shown: root.bar.wanted ? 1 : 0
    readonly property real way: height - 6 - thumb.height

    visible: shown > 0
    enabled: root.bar.wanted
    preventStealing: true
    Accessible.role: Accessible.ScrollBar
    Accessible.name: qsTr("Scroll bar")
    Accessible.onIncreaseAction: root.bar.turnPage(1)
    Accessible.onDecreaseAction: root.bar.turnPage(-1)

    Behavior on shown {
        EaseOut {
            duration: 200 * Theme.motion
        }
    }
    onPressed: mouse => {
        grip = mouse.y - thumb.y;
        if (grip < 0 || grip > thumb.height)
            root.bar.turnPage(grip < 0 ? -1 : 1);
        else
            root.bar.held = true;
    }
    onPositionChanged: mouse => {
        if (root.bar.held && way > 0)
            root.bar.scrollTo(root.bar.first + (mouse.y - grip - 3) / way * (root.bar.last - root.bar.first));
    }
    onReleased: root.bar.held = false
    onCanceled: root.bar.held = false

    Rectangle {
        id: thumb
        anchors {
            right: parent.right
            rightMargin: 3
        }
        y: 3 + root.way * (root.bar.fits ? 0 : Math.max(0, Math.min(1, (root.bar.view.contentY - root.bar.first) / (root.bar.last - root.bar.first))))
        width: 6
        height: Math.max(24, (root.height - 6) * root.bar.view.height / (root.bar.view.height + root.bar.last - root.bar.first))
        radius: 3
        color: Theme.fade(Theme.primary, 0.3)
        opacity: root.shown
    }
}
