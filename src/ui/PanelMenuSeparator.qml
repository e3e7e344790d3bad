pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! The line between two groups of entries. */
T.MenuSeparator {
    implicitWidth: 40
    implicitHeight: 9
    height: visible ? implicitHeight : 0
    contentItem: Item {
        Rectangle {
            anchors {
                left: parent.left
                right: parent.right
                margins: 8
                verticalCenter: parent.verticalCenter
            }
            height: 1
            color: Theme.fade(Theme.primary, 0.1)
        }
    }
}
