pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! One entry of a menu: its text, and where it has one a symbol behind it. `checked` puts a check mark there. */
T.MenuItem {
    id: root

    property string symbol
    property bool destructive: false

    readonly property color ink: !enabled ? Theme.secondary : highlighted ? "white" : destructive ? Theme.red : Theme.primary
    readonly property string mark: subMenu ? "chevron.right" : checked ? "checkmark" : symbol

    implicitWidth: Math.ceil(label.implicitWidth) + leftPadding + rightPadding + 28
    implicitHeight: 30
    leftPadding: 12
    rightPadding: 12

    Accessible.onPressAction: {
        if (root.subMenu) {
            root.subMenu.popup();
        } else {
            root.menu.dismiss();
            root.triggered();
        }
    }

    contentItem: Item {
        Text {
            id: label
            anchors {
                left: parent.left
                right: mark.left
                rightMargin: 8
                verticalCenter: parent.verticalCenter
            }
            text: root.text
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: root.ink
            font {
                pixelSize: 13
                weight: Font.Normal
            }
        }
        Symbol {
            id: mark
            anchors {
                right: parent.right
                verticalCenter: parent.verticalCenter
            }
            width: 16
            name: root.mark
            size: 13
            color: root.ink
        }
    }
    background: Rectangle {
        radius: 6
        color: root.highlighted ? Theme.blue : "transparent"
    }
}
