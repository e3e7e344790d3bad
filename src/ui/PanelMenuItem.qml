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

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
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

    contentItem: PanelMenuLabel {
        text: root.text
        hint: root.hint
        mark: root.mark
        ink: root.ink
        hintInk: root.highlighted ? root.ink : Theme.secondary
    }
    background: Rectangle {
        radius: 6
        color: root.highlighted ? Theme.blue : "transparent"
    }
}
