pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! One line that goes over into the next. */
Item {
    id: root

    property string text

    implicitWidth: now.implicitWidth
    implicitHeight: now.implicitHeight

    onTextChanged: {
        before.text = now.text;
        now.text = text;
        change.restart();
    }

    component Line: Text {
        anchors.centerIn: parent
        textFormat: Text.PlainText
        color: Theme.primary
        font {
            pixelSize: 15
            weight: Font.Medium
        }
    }

    Line {
        id: before
        opacity: 1 - now.opacity
    }
    Line {
        id: now
    }
    EaseInOut {
        id: change
        target: now
        property: "opacity"
        from: 0
        to: 1
        duration: 300 * Theme.motion
    }
}
