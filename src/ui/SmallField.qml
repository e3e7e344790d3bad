pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A framed field for a short value. */
Rectangle {
    id: root

    property alias text: field.text
    property alias fontSize: field.font.pixelSize
    property alias horizontalAlignment: field.horizontalAlignment
    property string prompt
    /*! What the screen reader calls it. */
    property string label

    signal edited(string text)
    signal accepted

    implicitHeight: field.implicitHeight + 6
    radius: 5
    color: Theme.fade(Theme.primary, 0.05)
    border.color: Theme.fade(Theme.primary, 0.12)

    CustomTextField {
        id: field
        anchors {
            fill: parent
            leftMargin: 5
            rightMargin: 5
        }
        placeholder: root.prompt
        label: root.label
        font.pixelSize: 11
        onTextEdited: root.edited(text)
        onAccepted: root.accepted()
    }
    FocusRing {
        cornerRadius: 5
        visible: field.activeFocus
    }
}
