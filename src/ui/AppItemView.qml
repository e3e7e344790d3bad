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

    /*! It only passes below the pointer: the list is moving. */
    property bool passing: false

    readonly property bool isHovering: area.containsMouse && !passing && !DragSource.active
    property bool isPressed: false
    property bool isLaunching: false

    readonly property TileMotion motion: motionHost.item as TileMotion
    readonly property real hover: motion ? motion.hover : 0
    readonly property real press: motion ? motion.press : 0
    readonly property real iconLaunch: motion ? motion.iconLaunch : 0

    signal contextMenuRequested(real x, real y)
    signal launched

    function launch() {
        isLaunching = true;
        ViewModel.launchApp(path, Window.window);
        launched();
    }

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.onPressAction: launch()

    // A tile that waits for its next application is not there for anyone, screen readers included.
    visible: index >= 0
    onPathChanged: isLaunching = false
    onVisibleChanged: isLaunching = false

    scale: motion ? 1 + 0.08 * motion.target : 1

    Item {
        id: block
        x: Math.round((root.width - width) / 2)
        y: 8
        width: 90
        height: 90
        scale: (1 + 0.08 * root.hover) * (1 - root.press) + 0.95 * root.press

        Loader {
            id: motionHost
            readonly property bool isTouched: root.isHovering || root.isPressed || root.isLaunching || root.targeted
            onIsTouchedChanged: active = true
            anchors.fill: parent
            active: false
            source: "TileMotion.qml"
            onLoaded: {
                const motion = item as TileMotion;
                motion.isHovering = Qt.binding(() => root.isHovering);
                motion.isPressed = Qt.binding(() => root.isPressed);
                motion.isTargeted = Qt.binding(() => root.targeted);
                motion.isLaunching = Qt.binding(() => root.isLaunching);
                motion.launchShown.connect(() => root.isLaunching = false);
                icon.transform = motion.tilt;
            }
        }
        AppIconView {
            id: icon
            x: 5
            y: 5
            width: 80
            height: 80
            path: root.path
            lift: root.hover
            opacity: 0.6 * root.iconLaunch + (1 - 0.1 * root.hover) * (1 - root.iconLaunch)
            scale: (1 + 0.05 * root.hover) * (1 - root.press) + 0.95 * root.press
        }
    }

    TextPicture {
        x: (root.width - width) / 2
        y: block.y + block.height + 8
        width: 110
        text: root.name
        color: Theme.primary
        opacity: root.motion ? 1 - 0.5 * root.motion.textLaunch : 1
        pixelSize: 12
        weight: Font.Medium
        maximumLineCount: 2
        centered: true
    }

    MouseArea {
        id: area

        property point pressPlace
        /*! A finger or a pen, as far as the press itself tells. */
        property bool isTouch: false

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
            if (isTouch)
                root.contextMenuRequested(mouse.x, mouse.y);
        }
        onPressed: mouse => {
            isTouch = mouse.source !== Qt.MouseEventNotSynthesized;
            pressPlace = Qt.point(mouse.x, mouse.y);
        }
        onPositionChanged: mouse => {
            if (!(pressedButtons & Qt.LeftButton) || isTouch)
                return;
            const way = Math.abs(mouse.x - pressPlace.x) + Math.abs(mouse.y - pressPlace.y);
            if (way >= Application.styleHints.startDragDistance)
                DragSource.dragUrl(block, GridDrops.beginAppDrag(root.path), mapToItem(block, pressPlace));
        }
    }
}
