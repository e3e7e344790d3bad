pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! Closes a panel. */
Item {
    id: root

    property color ink: Theme.dark ? Qt.rgba(1, 1, 1, 0.3) : Theme.fade(Theme.primary, 0.3)

    signal clicked

    implicitWidth: 20
    implicitHeight: 20
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Close")
    Accessible.focusable: true
    Accessible.onPressAction: clicked()

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onSpacePressed: clicked()

    Symbol {
        anchors.centerIn: parent
        name: "xmark.circle.fill"
        size: 20
        color: root.ink
    }
    FocusRing {
        cornerRadius: 10
    }
    MouseArea {
        anchors.fill: parent
        anchors.margins: -8
        onClicked: root.clicked()
    }
}
