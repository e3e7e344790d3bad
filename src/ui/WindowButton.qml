pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A round button of the window's header. */
Item {
    id: root

    required property string symbol
    required property string label
    signal clicked

    implicitWidth: 28
    implicitHeight: 28
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.focusable: true
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onSpacePressed: clicked()

    Panel {
        anchors.fill: parent
        radius: width / 2
        color: Theme.primary
        opacity: area.pressed ? 0.16 : area.containsMouse ? 0.1 : 0.05
    }
    Symbol {
        anchors.centerIn: parent
        name: root.symbol
        size: 13
        color: Theme.primary
        opacity: 0.8
    }
    FocusRing {
        cornerRadius: root.width / 2
    }
    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
    }
}
