pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The wheel of colours with its marker: drag on it, or use the arrows, sideways for the hue and up for more colour. */
Item {
    id: root

    required property FolderColorEditor editor

    implicitWidth: 140
    implicitHeight: 140
    activeFocusOnTab: true

    Accessible.role: Accessible.Dial
    Accessible.name: qsTr("Color wheel")
    Accessible.description: qsTr("Hue %1°, saturation %2 %").arg(Math.round(editor.hue * 360)).arg(Math.round(editor.saturation * 100))
    Accessible.focusable: true
    Accessible.onIncreaseAction: editor.moveBy(1 / 72, 0)
    Accessible.onDecreaseAction: editor.moveBy(-1 / 72, 0)
    Keys.onLeftPressed: editor.moveBy(-1 / 72, 0)
    Keys.onRightPressed: editor.moveBy(1 / 72, 0)
    Keys.onUpPressed: editor.moveBy(0, 0.05)
    Keys.onDownPressed: editor.moveBy(0, -0.05)

    PictureItem {
        anchors.fill: parent
        picture: ColorWheel.picture(root.width, Screen.devicePixelRatio)
    }
    FocusRing {
        cornerRadius: root.width / 2
    }
    Item {
        x: root.width / 2 + root.editor.markerOffset.x - width / 2
        y: root.height / 2 + root.editor.markerOffset.y - height / 2
        width: 14
        height: 14

        FloatShadow {
            anchors.fill: parent
            radius: 7
            blur: 2
            offset: 0
            color: Qt.rgba(0, 0, 0, 0.33)
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: -1
            radius: width / 2
            color: root.editor.current
            border.color: "white"
            border.width: 2
        }
    }
    MouseArea {
        anchors.fill: parent
        preventStealing: true
        onPressed: mouse => root.editor.dragTo(mouse.x - width / 2, mouse.y - height / 2)
        onPositionChanged: mouse => root.editor.dragTo(mouse.x - width / 2, mouse.y - height / 2)
    }
}
