pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A panel over the whole window that must be answered first. Escape closes it, Return is `accepted`; the keyboard stays
    inside and goes back where it came from. Load it when it is first asked for. */
T.Popup {
    id: root

    /*! What the screen reader calls it. */
    property string title
    property real cornerRadius: 16

    signal accepted

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    dim: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    padding: 20

    implicitWidth: Math.min(contentWidth + leftPadding + rightPadding, parent ? parent.width - 32 : contentWidth)
    implicitHeight: Math.min(contentHeight + topPadding + bottomPadding, parent ? parent.height - 32 : contentHeight)

    // The panel hides what is below it: the largest part of a darkened window need not be drawn.
    T.Overlay.modal: Item {
        opacity: root.opacity

        DimmedSurround {
            anchors.fill: parent
            hole: shadow.reach
            color: shadow.ground
        }
        FloatShadow {
            id: shadow
            x: root.x
            y: root.y
            width: root.width
            height: root.height
            radius: root.cornerRadius
            hollow: true
            hiddenFrom: 0.97
            ground: Qt.rgba(0, 0, 0, Theme.dark ? 0.4 : 0.2)
        }
    }
    readonly property FocusReturn focusReturn: FocusReturn {}
    onClosed: focusReturn.giveBack()
    onAboutToShow: focusReturn.remember(parent)

    background: Rectangle {
        radius: root.cornerRadius
        color: Theme.mix(Theme.windowBackground, "white", Theme.dark ? 0.04 : 0.5)
        border.color: Theme.fade(Theme.primary, 0.12)
    }
    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
        Keys.onReturnPressed: root.accepted()
        Keys.onEnterPressed: root.accepted()
    }
    enter: Transition {
        EaseOut {
            properties: "opacity"
            from: 0
            to: 1
            duration: 180 * Theme.motion
        }
        EaseOut {
            properties: "scale"
            from: 0.97
            to: 1
            duration: 180 * Theme.motion
        }
    }
    exit: Transition {
        EaseOut {
            properties: "opacity"
            to: 0
            duration: 120 * Theme.motion
        }
    }
}
