pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

// Lies around its parent while that has the keyboard. `cornerRadius` is the parent's own.
Rectangle {
    id: root

    property real cornerRadius: 6
    readonly property int thickness: 3

    anchors.fill: parent
    anchors.margins: -root.thickness
    radius: root.cornerRadius + root.thickness
    color: "transparent"
    border.color: Theme.focus
    border.width: root.thickness
    visible: root.parent ? root.parent.activeFocus : false
}
