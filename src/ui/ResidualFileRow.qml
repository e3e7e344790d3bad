pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Ui
import Quillbay.Vocabulary

/*! One thing that can go. What the user may not delete shows a lock and does not react; its selection comes from what
    selects many at once. */
Rectangle {
    id: root

    required property int index
    required property string rowId
    required property string name
    required property string path
    required property string icon
    required property string sizeText
    required property bool isSelected
    required property bool isUserDeletable
    /*! Whether it has the keyboard. */
    property bool focused: false

    readonly property string lockText: qsTr("Requires administrator access — cannot be deleted")

    signal toggled

    function toggle() {
        if (isUserDeletable)
            toggled();
    }

    // A row that waits for its next file is not there for anyone, screen readers included.
    visible: index >= 0
    implicitHeight: Math.ceil(texts.height) + 14
    color: area.containsMouse && isUserDeletable ? Theme.fade(Theme.primary, 0.04) : "transparent"

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.description: {
        const parts = [path, sizeText];
        if (!isUserDeletable)
            parts.push(lockText);
        return parts.filter(part => part !== "").join(", ");
    }
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: toggle()
    Accessible.onToggleAction: toggle()

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.toggle()
    }

    Symbol {
        id: check
        anchors {
            left: parent.left
            leftMargin: 20
            verticalCenter: parent.verticalCenter
        }
        width: 20
        name: !root.isUserDeletable ? "lock.fill" : root.isSelected ? "checkmark.square.fill" : "square"
        size: root.isUserDeletable ? 16 : 13
        color: !root.isUserDeletable ? Theme.fade(Theme.orange, 0.7) : root.isSelected ? Theme.blue : Theme.fade(Theme.secondary, 0.5)

        HoverHandler {
            id: rest
            enabled: !root.isUserDeletable
        }
        HoverHelp {
            // Above the sheet, whose own place this is.
            parent: T.Overlay.overlay
            target: check
            text: root.lockText
            hovered: rest.hovered
        }
    }
    Symbol {
        id: kind
        anchors {
            left: check.right
            leftMargin: 12
            verticalCenter: parent.verticalCenter
        }
        width: 18
        name: root.icon
        size: 14
        color: Theme.secondary
        opacity: root.isUserDeletable ? 1 : 0.4
    }
    Column {
        id: texts
        anchors {
            left: kind.right
            leftMargin: 12
            right: size.left
            rightMargin: 12
            verticalCenter: parent.verticalCenter
        }
        spacing: 1

        Row {
            spacing: 5

            Text {
                width: Math.min(implicitWidth, texts.width - (mark.visible ? mark.width + 5 : 0))
                text: root.name
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.primary
                opacity: root.isUserDeletable ? 1 : 0.4
                font {
                    pixelSize: 12
                    weight: Font.Medium
                }
            }
            Rectangle {
                id: mark
                anchors.verticalCenter: parent.verticalCenter
                width: Math.ceil(system.implicitWidth) + 10
                height: Math.ceil(system.implicitHeight) + 4
                visible: !root.isUserDeletable
                radius: height / 2
                color: Theme.fade(Theme.orange, 0.12)

                Text {
                    id: system
                    anchors.centerIn: parent
                    text: qsTr("System")
                    color: Theme.orange
                    font {
                        pixelSize: 9
                        bold: true
                    }
                }
            }
        }
        Text {
            width: parent.width
            visible: text !== ""
            text: root.path
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            color: Theme.secondary
            opacity: root.isUserDeletable ? 1 : 0.5
            font.pixelSize: 10
        }
    }
    Text {
        id: size
        anchors {
            right: parent.right
            rightMargin: 20
            verticalCenter: parent.verticalCenter
        }
        width: 62
        text: root.sizeText
        horizontalAlignment: Text.AlignRight
        color: Theme.secondary
        opacity: root.isUserDeletable ? 1 : 0.4
        font {
            pixelSize: 11
            weight: Font.Medium
        }
    }
    FocusRing {
        anchors.margins: 0
        cornerRadius: 3
        visible: root.focused
    }
}
