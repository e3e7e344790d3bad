pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A plain line of text on a faint plate. */
FocusScope {
    id: root

    property alias text: field.text
    required property string placeholder

    signal edited(string text)
    signal accepted

    function requestFocus() {
        field.requestFocus();
    }

    implicitHeight: Math.ceil(field.implicitHeight) + 12

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Theme.fade(Theme.primary, 0.04)
    }
    CustomTextField {
        id: field
        anchors {
            fill: parent
            margins: 6
        }
        focus: true
        placeholder: root.placeholder
        font.pixelSize: 12
        onTextEdited: root.edited(text)
        onAccepted: root.accepted()
    }
    FocusRing {
        cornerRadius: 6
        visible: field.activeFocus
    }
}
