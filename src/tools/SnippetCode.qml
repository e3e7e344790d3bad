pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Code to read; where it is larger than its place it scrolls both ways, by the arrow keys too. */
Rectangle {
    id: root

    required property string code

    implicitHeight: Math.min(100, text.height + 12)
    radius: 4
    color: Theme.fade(Theme.primary, 0.04)
    activeFocusOnTab: true

    Accessible.role: Accessible.StaticText
    Accessible.name: code
    Accessible.focusable: true
    Keys.onPressed: event => {
        const step = {
            [Qt.Key_Left]: [-40, 0],
            [Qt.Key_Right]: [40, 0],
            [Qt.Key_Up]: [0, -20],
            [Qt.Key_Down]: [0, 20]
        }[event.key];
        if (!step)
            return;
        view.contentX = Math.max(0, Math.min(view.contentWidth - view.width, view.contentX + step[0]));
        view.contentY = Math.max(0, Math.min(view.contentHeight - view.height, view.contentY + step[1]));
        event.accepted = true;
    }

    Flickable {
        id: view
        anchors {
            fill: parent
            margins: 6
        }
        contentWidth: Math.max(width, text.width)
        contentHeight: Math.max(height, text.height)
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        Text {
            id: text
            text: root.code
            textFormat: Text.PlainText
            color: Theme.primary
            font {
                family: Theme.monospacedFamily
                pixelSize: 11
            }
        }
        ThinScrollBar {
            view: view
        }
    }
    FocusRing {
        cornerRadius: 4
        visible: root.activeFocus
    }
}
