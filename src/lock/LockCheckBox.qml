pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! A box to tick, and beside it what for. */
T.CheckBox {
    id: root

    implicitWidth: Math.ceil(implicitContentWidth)
    implicitHeight: Math.ceil(Math.max(implicitContentHeight, implicitIndicatorHeight))
    spacing: 6
    focusPolicy: Qt.TabFocus
    font.pixelSize: 12

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checked: checked
    Accessible.onToggleAction: toggle()
    Accessible.onPressAction: toggle()

    indicator: Rectangle {
        y: Math.round((root.height - height) / 2)
        implicitWidth: 14
        implicitHeight: 14
        radius: 4
        color: root.checked ? Theme.blue : Theme.fade(Theme.primary, root.down ? 0.12 : 0.05)
        border.color: root.checked ? Theme.blue : Theme.fade(Theme.primary, 0.3)

        Symbol {
            anchors.centerIn: parent
            visible: root.checked
            name: "checkmark"
            size: 10
            weight: Font.Bold
            color: "white"
        }
        FocusRing {
            cornerRadius: 4
            visible: root.visualFocus
        }
    }
    contentItem: Text {
        leftPadding: root.indicator.width + root.spacing
        text: root.text
        textFormat: Text.PlainText
        color: Theme.primary
        font: root.font
        verticalAlignment: Text.AlignVCenter
    }
}
