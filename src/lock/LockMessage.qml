pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! Says what went wrong; takes no room where nothing did. */
Text {
    id: root

    visible: text !== ""
    width: Math.min(implicitWidth, 420)
    color: Theme.red
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.WordWrap
    font.pixelSize: Theme.captionSize

    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
}
