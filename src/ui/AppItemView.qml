pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The tile that stands for an application wherever applications are shown. */
Item {
    id: root

    required property int index
    required property string name
    required property string path
    property bool focused: false
    /*! A dragged application would go here. */
    property bool targeted: false

    readonly property bool isHovering: area.containsMouse
    property bool isPressed: false
    property bool isLaunching: false

    /*! 0 at rest, 1 with the pointer over the tile; between, and shortly beyond, on the spring. */
    property real hover: isHovering ? 1 : 0
    property real press: isPressed ? 1 : 0
    property real iconLaunch: isLaunching ? 1 : 0
    property real textLaunch: isLaunching ? 1 : 0

    signal contextMenuRequested(real x, real y)
    signal launched

    function launch() {
        isLaunching = true;
        ViewModel.launchApp(path, Window.window);
        if (!launchTimer.running)
            launchTimer.start();
        launched();
    }

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.onPressAction: launch()

    // A tile that waits for its next application is not there for anyone, screen readers included.
    visible: index >= 0
    onVisibleChanged: {
        launchTimer.stop();
        isLaunching = false;
    }

    scale: targeted ? 1.08 : 1
    Behavior on scale {
        SpringMotion {
            preset: SpringMotion.DragHighlight
        }
    }
    Behavior on hover {
        SpringMotion {}
    }
    Behavior on press {
        SpringMotion {}
    }
    Behavior on iconLaunch {
        EaseOut {
            duration: 300
        }
    }
    Behavior on textLaunch {
        EaseOut {
            duration: 200
        }
    }
    Timer {
        id: launchTimer
        interval: 300
        onTriggered: root.isLaunching = false
    }

    Item {
        id: block
        x: Math.round((root.width - width) / 2)
        y: 8
        width: 90
        height: 90
        scale: (1 + 0.08 * root.hover) * (1 - root.press) + 0.95 * root.press

        PictureItem {
            anchors.fill: parent
            visible: root.hover > 0
            picture: visible ? Artwork.plate(90, 20, Theme.primary, Screen.devicePixelRatio) : undefined
            opacity: Math.min(1, root.hover)
        }
        AppIconView {
            x: 5
            y: 5
            width: 80
            height: 80
            path: root.path
            lift: root.hover
            opacity: 0.6 * root.iconLaunch + (1 - 0.1 * root.hover) * (1 - root.iconLaunch)
            scale: (1 + 0.05 * root.hover) * (1 - root.press) + 0.95 * root.press
            transform: Rotation {
                origin.x: 40
                origin.y: 40
                axis {
                    x: 1
                    y: 0
                    z: 0
                }
                angle: 5 * root.hover
            }
        }
    }

    Text {
        anchors {
            top: block.bottom
            topMargin: 8
            horizontalCenter: parent.horizontalCenter
        }
        width: 110
        text: root.name
        textFormat: Text.PlainText
        color: Theme.primary
        opacity: 1 - 0.5 * root.textLaunch
        font {
            pixelSize: 12
            weight: Font.Medium
        }
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
    }

    FocusRing {
        cornerRadius: 20
        visible: root.focused
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                root.contextMenuRequested(mouse.x, mouse.y);
            else
                root.launch();
        }
        onPressAndHold: mouse => {
            if (mouse.source !== Qt.MouseEventNotSynthesized)
                root.contextMenuRequested(mouse.x, mouse.y);
        }
        onPressed: mouse => pressPlace = Qt.point(mouse.x, mouse.y)
        onPositionChanged: mouse => {
            if (!(pressedButtons & Qt.LeftButton) || mouse.source !== Qt.MouseEventNotSynthesized)
                return;
            const way = Math.abs(mouse.x - pressPlace.x) + Math.abs(mouse.y - pressPlace.y);
            if (way >= Application.styleHints.startDragDistance)
                DragSource.dragUrl(block, GridDrops.beginAppDrag(root.path), mapToItem(block, pressPlace));
        }

        property point pressPlace
    }
}
