pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! One entry of a tile's context menu. */
T.MenuItem {
    id: root

    implicitWidth: 168
    implicitHeight: 30
    leftPadding: 12
    rightPadding: 12

    Accessible.onPressAction: {
        root.menu.dismiss();
        root.triggered();
    }

    contentItem: Text {
        text: root.text
        verticalAlignment: Text.AlignVCenter
        color: root.highlighted ? "white" : Theme.primary
        font {
            pixelSize: 13
            weight: Font.Normal
        }
    }
    background: Rectangle {
        radius: 6
        color: root.highlighted ? Theme.blue : "transparent"
    }
}
