pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! Empties the search field. */
Item {
    id: root

    required property color ink
    signal clicked

    implicitWidth: 20
    implicitHeight: 20

    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Clear search")
    Accessible.onPressAction: clicked()

    Symbol {
        anchors.centerIn: parent
        name: "xmark.circle.fill"
        size: 16
        color: root.ink
        opacity: 0.4
    }
    MouseArea {
        anchors.fill: parent
        onClicked: root.clicked()
    }
}
