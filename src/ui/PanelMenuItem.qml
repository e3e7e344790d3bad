pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! One entry of a menu: its text, and where it has one a symbol behind it. `checked` puts a check mark there. */
T.MenuItem {
    id: root

    property string symbol
    /*! The keys that do the same, in portable form. */
    property string hint
    property bool destructive: false

    readonly property color ink: !enabled ? Theme.secondary : highlighted ? "white" : destructive ? Theme.red : Theme.primary
    readonly property string mark: subMenu ? "chevron.right" : checked ? "checkmark" : symbol

    implicitWidth: Math.ceil(label.implicitWidth) + leftPadding + rightPadding + (hint === "" ? 28 : Math.ceil(keys.implicitWidth) + 36)
    implicitHeight: 30
    height: visible ? implicitHeight : 0
    leftPadding: 12
    rightPadding: 12

    Accessible.name: text
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
        Text {
            id: keys
            anchors {
                right: parent.right
                verticalCenter: parent.verticalCenter
            }
            text: root.hint
            color: root.highlighted ? root.ink : Theme.secondary
            font.pixelSize: 12
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
