pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The code on white, with every module sharp. A drag of it carries the picture as a file. */
Item {
    id: root

    required property QRGenerator generator

    implicitWidth: 140 + 2 * 8
    implicitHeight: 140 + 2 * 8

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("QR Code")
    Accessible.description: generator.text

    FloatShadow {
        anchors.fill: parent
        radius: 8
        blur: 4
        offset: 2
        color: Qt.rgba(0, 0, 0, 0.12)
    }
    Rectangle {
        id: card
        anchors.fill: parent
        radius: 8
        color: "white"

        PictureItem {
            anchors {
                fill: parent
                margins: 8
            }
            picture: root.generator.preview
        }
    }
    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.OpenHandCursor
        preventStealing: true

        property point grip
        property bool isDragged: false

        onPressed: mouse => {
            grip = Qt.point(mouse.x, mouse.y);
            isDragged = false;
        }
        onPositionChanged: mouse => {
            const way = Math.abs(mouse.x - grip.x) + Math.abs(mouse.y - grip.y);
            if (isDragged || way < Application.styleHints.startDragDistance)
                return;
            isDragged = true;
            DragSource.dragUrl(card, root.generator.qrFileURL(), grip);
        }
    }
}
