pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A button of the window's header: a symbol, and where there is room for it a text. */
Item {
    id: root

    required property string symbol
    required property string label
    property bool showsText: false
    property color ink: Theme.primary
    /*! It opens a menu or a panel. */
    property bool opensPopup: false
    property bool open: false

    signal clicked

    implicitWidth: showsText ? Math.ceil(content.implicitWidth) + 20 : 32
    implicitHeight: 32
    activeFocusOnTab: true

    Accessible.role: opensPopup ? Accessible.ButtonMenu : Accessible.Button
    Accessible.name: label
    Accessible.focusable: true
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onSpacePressed: clicked()
    Keys.onDownPressed: event => {
        event.accepted = opensPopup;
        if (opensPopup)
            clicked();
    }

    Rectangle {
        anchors.fill: parent
        radius: 8
        visible: area.containsMouse || root.open
        color: Theme.fade(Theme.primary, area.pressed || root.open ? 0.12 : 0.07)
    }
    Row {
        id: content
        anchors.centerIn: parent
        spacing: 6
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
            size: 17
            color: root.ink
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.showsText
            text: root.label
            textFormat: Text.PlainText
            color: root.ink
            font.pixelSize: 13
        }
    }
    FocusRing {
        cornerRadius: 8
    }
    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
    }
    HoverHelp {
        target: root
        text: root.label
        hovered: area.containsMouse && !root.open && !root.showsText
    }
}
