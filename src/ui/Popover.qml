pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A small panel beside what it belongs to. It keeps inside the window, closes by Escape and by a press outside, and gives
    the keyboard back. Its `parent` is the item it belongs to. Load it when it is first asked for. */
T.Popup {
    id: root

    enum Side {
        Below,
        Right
    }

    /*! What the screen reader calls it. */
    property string title
    property int side: Popover.Side.Below

    x: side === Popover.Side.Right && parent ? parent.width + 8 : parent ? Math.round((parent.width - width) / 2) : 0
    y: side === Popover.Side.Right && parent ? Math.round((parent.height - height) / 2) : parent ? parent.height + 8 : 0
    margins: 8
    padding: 12
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding

    readonly property FocusReturn focusReturn: FocusReturn {}
    onClosed: focusReturn.giveBack()
    onAboutToShow: focusReturn.remember(parent)

    background: Item {
        FloatShadow {
            anchors.fill: parent
            radius: 12
            blur: 16
            offset: 6
        }
        Rectangle {
            anchors.fill: parent
            radius: 12
            color: Theme.mix(Theme.windowBackground, "white", Theme.dark ? 0.06 : 0.7)
            border.color: Theme.fade(Theme.primary, 0.15)
        }
    }
    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
    }
    enter: Transition {
        EaseOut {
            properties: "opacity"
            from: 0
            to: 1
            duration: 120 * Theme.motion
        }
    }
    exit: Transition {
        EaseOut {
            properties: "opacity"
            to: 0
            duration: 100 * Theme.motion
        }
    }
}
