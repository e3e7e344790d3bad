pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! A size that was measured, to be copied. */
T.AbstractButton {
    id: root

    implicitHeight: 28
    focusPolicy: Qt.TabFocus

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        Text {
            anchors {
                left: parent.left
                leftMargin: 8
                right: parent.right
                rightMargin: 8 + 11 + 8
                verticalCenter: parent.verticalCenter
            }
            text: root.text
            textFormat: Text.PlainText
            color: Theme.primary
            elide: Text.ElideRight
            font {
                family: Theme.monospacedFamily
                pixelSize: 11
            }
        }
        Symbol {
            anchors {
                right: parent.right
                rightMargin: 8
                verticalCenter: parent.verticalCenter
            }
            name: "doc.on.doc"
            size: 11
            color: root.hovered ? Theme.primary : Theme.secondary
        }
    }
    background: Rectangle {
        radius: 6
        color: Theme.fade(Theme.primary, root.down ? 0.12 : root.hovered ? 0.08 : 0.04)

        FocusRing {
            parent: root
            cornerRadius: 6
            anchors.margins: 0
            visible: root.activeFocus
        }
    }
}
