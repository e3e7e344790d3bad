pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The content of the ruler's window: the scale, the size, and the surface by which it is moved. */
Item {
    id: root

    /*! What is behind the window shows through it. */
    property bool seeThrough: true
    /*! What must be seen besides the edges where nothing shows through. */
    readonly property rect solidArea: Qt.rect(capsule.x, capsule.y, capsule.width, capsule.height)
    readonly property real solidRadius: capsule.radius

    opacity: 0.98

    // A faint fill, so that there is something under the pointer to hold.
    Rectangle {
        anchors.fill: parent
        radius: root.seeThrough ? 12 : 0
        color: root.seeThrough ? Qt.rgba(0, 0, 0, 0.015) : Theme.windowBackground
    }
    Rectangle {
        anchors.fill: parent
        radius: 12
        color: "transparent"
        border.color: Theme.fade(Theme.blue, 0.8)
        border.width: 1.5
    }
    RulerGridCanvas {
        id: canvas
        anchors.fill: parent
        ink: Theme.blue

        Repeater {
            model: canvas.horizontalLabels
            delegate: Mark {
                x: Math.round(modelData - width / 2)
                y: 18
            }
        }
        Repeater {
            model: canvas.verticalLabels
            delegate: Mark {
                x: 18
                y: Math.round(modelData - height / 2)
            }
        }
    }
    WindowDragZone {
        anchors.fill: parent
        window: root.Window.window
    }
    RulerCapsule {
        id: capsule
        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.min(40, Math.round((parent.height - height) / 2))
        width: Math.min(220, parent.width - 24)
        measuredWidth: Math.floor(root.width)
        measuredHeight: Math.floor(root.height)
        onClosed: RulerManager.closeRuler()
    }
    Symbol {
        anchors {
            right: parent.right
            bottom: parent.bottom
            margins: 4
        }
        name: "line.3.horizontal"
        size: 8
        color: Theme.fade(Theme.blue, 0.5)
    }
    WindowEdges {
        anchors.fill: parent
        window: root.Window.window
    }

    component Mark: Text {
        required property int modelData

        text: modelData
        textFormat: Text.PlainText
        color: Theme.blue
        font {
            family: Theme.monospacedFamily
            pixelSize: 9
            bold: true
        }
    }
}
