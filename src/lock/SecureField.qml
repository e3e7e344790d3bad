pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A line for a password, which shows how much was typed and not what. The toolkit would give the text itself to whoever
    reads the accessibility tree, so what stands there is this item, whose `text` is what one sees. It is not said to be a
    password's: the toolkit takes the name from what is. */
FocusScope {
    id: root

    property alias password: field.text
    readonly property string text: "•".repeat(field.text.length)
    property string placeholder

    /*! Return was pressed. */
    signal accepted

    function selectAll() {
        field.selectAll();
    }

    implicitHeight: field.implicitHeight + 10

    Accessible.role: Accessible.EditableText
    Accessible.name: root.placeholder
    Accessible.focusable: true
    Accessible.focused: field.activeFocus

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Theme.dark ? Qt.rgba(1, 1, 1, 0.06) : "white"
        border.color: Theme.fade(Theme.primary, 0.2)

        FocusRing {
            cornerRadius: 6
            visible: field.activeFocus
        }
    }
    CustomTextField {
        id: field
        anchors {
            left: parent.left
            right: parent.right
            leftMargin: 8
            rightMargin: 8
            verticalCenter: parent.verticalCenter
        }
        focus: true
        placeholder: root.placeholder
        echoMode: TextInput.Password
        unread: true
        font.pixelSize: 13
        onAccepted: root.accepted()
    }
}
