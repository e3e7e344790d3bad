pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A card's title while it is edited. Return is `committed`, Escape `cancelled`. */
FocusScope {
    id: root

    property alias text: field.text

    signal committed(string name)
    signal cancelled

    function begin(name: string) {
        field.text = name;
        field.requestFocus();
        field.selectAll();
    }

    implicitHeight: field.implicitHeight + 8

    // Keys that the field leaves alone are not for the cards around it.
    Keys.onPressed: event => {
        event.accepted = event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab;
        if (event.key === Qt.Key_Escape)
            cancelled();
    }

    Rectangle {
        anchors.fill: parent
        radius: 4
        color: Theme.dark ? Qt.rgba(1, 1, 1, 0.1) : Theme.fade(Theme.primary, 0.06)
    }
    CustomTextField {
        id: field
        anchors {
            fill: parent
            margins: 4
        }
        placeholder: qsTr("Folder Name")
        ink: Theme.dark ? "white" : Theme.primary
        font {
            pixelSize: 16
            weight: Font.Bold
        }
        onAccepted: root.committed(text)
    }
}
