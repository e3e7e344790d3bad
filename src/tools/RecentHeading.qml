pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! The line above what a tool remembers, with a button that empties it. */
Item {
    id: root

    required property string title
    /*! What the screen reader calls the button. */
    required property string clearLabel

    signal cleared

    implicitHeight: clear.implicitHeight

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.title
        textFormat: Text.PlainText
        color: Theme.secondary
        font.pixelSize: 11
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    T.AbstractButton {
        id: clear

        anchors.right: parent.right
        anchors.rightMargin: -horizontalPadding
        text: qsTr("Clear")
        horizontalPadding: 6
        verticalPadding: 3
        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        focusPolicy: Qt.TabFocus
        onClicked: root.cleared()

        Accessible.role: Accessible.Button
        Accessible.name: root.clearLabel
        Accessible.onPressAction: clicked()
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()

        contentItem: Text {
            text: clear.text
            textFormat: Text.PlainText
            color: Theme.fade(Theme.secondary, clear.down ? 0.6 : 0.8)
            font.pixelSize: 10
        }
        background: Rectangle {
            radius: 5
            color: Theme.fade(Theme.primary, 0.07)
            opacity: clear.hovered ? 1 : 0

            FocusRing {
                parent: clear
                cornerRadius: 5
                anchors.margins: 0
                visible: clear.activeFocus
            }
        }
    }
}
