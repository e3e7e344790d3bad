pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A bare symbol to press, in a popover. Space and Return press it. */
T.AbstractButton {
    id: root

    required property string symbol
    /*! What the screen reader calls it, and its help text. */
    required property string label
    property real size: 14
    property color ink: Theme.primary
    readonly property Item overlay: T.Overlay.overlay

    implicitWidth: Math.max(22, Math.ceil(size) + 6)
    implicitHeight: implicitWidth
    focusPolicy: Qt.TabFocus
    opacity: enabled ? 1 : 0.35

    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)

    function press(event: KeyEvent) {
        if (!event.isAutoRepeat)
            clicked();
    }

    contentItem: Symbol {
        name: root.symbol
        size: root.size
        color: root.ink
        opacity: root.down ? 0.6 : 1
    }
    background: Rectangle {
        radius: 6
        color: Theme.fade(Theme.primary, 0.07)
        opacity: root.hovered && root.enabled ? 1 : 0

        FocusRing {
            parent: root
            cornerRadius: 6
            anchors.margins: 0
            visible: root.activeFocus
        }
    }
    HoverHelp {
        // Else the popover would cover it.
        parent: root.overlay
        target: root
        text: root.label
        hovered: root.hovered
    }
}
