pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The card of a folder or a category: its name and a preview of its applications. */
Item {
    id: root

    required property string identifier
    /*! Empty for a category. */
    required property string folderId
    required property string name
    required property AppListModel apps
    property bool focused: false
    /*! What is dragged would go here. */
    property bool targeted: false
    /*! It can be dragged. */
    property bool movable: false
    /*! The wheel is scrolling what is behind, and goes on doing so. */
    property bool wheelPasses: false

    readonly property bool isFolder: folderId !== ""
    readonly property bool isEmpty: apps !== null && apps.count === 0
    readonly property bool isHovering: area.containsMouse && !DragSource.active
    readonly property bool isEditingName: titleField.active
    readonly property string help: isFolder ? qsTr("Folder: %1").arg(name) : qsTr("Click to see all %1 apps in %2").arg(apps ? apps.count : 0).arg(name)

    property real hover: isHovering ? 1 : 0
    property real target: targeted ? 1 : 0

    signal expanded
    signal contextMenuRequested(real x, real y)
    /*! The keyboard is free again. */
    signal nameEdited

    function beginRename() {
        if (!isFolder)
            return;
        expansion.stop();
        titleField.active = true;
    }
    function endRename() {
        titleField.active = false;
        titleField.focus = false;
        nameEdited();
    }
    function commitName(name: string) {
        if (name !== "" && isFolder)
            Library.renameFolder(folderId, name);
        endRename();
    }
    /*! A folder's title waits whether a second click wants to rename it. */
    function click(x: real, y: real) {
        if (isEmpty && addition.contains(mapToItem(addition, x, y))) {
            addApps();
            return;
        }
        const inTitle = isFolder && title.contains(mapToItem(title, x, y));
        if (isEditingName && inTitle)
            return;
        if (!inTitle)
            expanded();
        else if (expansion.running)
            beginRename();
        else
            expansion.start();
    }

    // Another card takes this one's place.
    onIdentifierChanged: {
        expansion.stop();
        titleField.active = false;
        preview.toTop();
    }

    width: 260
    height: 190
    scale: (1 + 0.02 * hover) * (1 + 0.05 * target)

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.description: help
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.onPressAction: expanded()

    Behavior on hover {
        SpringMotion {
            preset: SpringMotion.CardHover
        }
    }
    Behavior on target {
        SpringMotion {
            preset: SpringMotion.Move
        }
    }
    Timer {
        id: expansion
        interval: Application.styleHints.mouseDoubleClickInterval
        onTriggered: root.expanded()
    }

    PictureItem {
        anchors {
            fill: parent
            margins: -Artwork.glowReach()
        }
        visible: root.target > 0
        opacity: Math.min(1, root.target)
        picture: visible ? Artwork.cardGlow(Theme.fade(Theme.blue, 0.8), Screen.devicePixelRatio) : undefined
    }
    CardBacking {
        anchors.fill: parent
    }
    MouseArea {
        id: area

        property point pressPlace
        property bool dragged: false
        /*! A finger or a pen, as far as the press itself tells. */
        property bool isTouch: false

        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: mouse => {
            dragged = false;
            isTouch = mouse.source !== Qt.MouseEventNotSynthesized;
            pressPlace = Qt.point(mouse.x, mouse.y);
        }
        onPositionChanged: mouse => {
            if (dragged || !root.movable || !(pressedButtons & Qt.LeftButton) || isTouch)
                return;
            const way = Math.abs(mouse.x - pressPlace.x) + Math.abs(mouse.y - pressPlace.y);
            if (way < Application.styleHints.startDragDistance)
                return;
            dragged = true;
            DragSource.dragText(root, root.identifier, pressPlace);
        }
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                root.contextMenuRequested(mouse.x, mouse.y);
            else if (!dragged)
                root.click(mouse.x, mouse.y);
        }
        onPressAndHold: mouse => {
            if (isTouch)
                root.contextMenuRequested(mouse.x, mouse.y);
        }
    }

    Text {
        id: title
        x: 20
        y: 24
        width: parent.width - 40
        visible: !root.isEditingName
        text: root.name
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.dark ? Qt.rgba(1, 1, 1, 0.9) : Theme.fade(Theme.primary, 0.85)
        font {
            pixelSize: 16
            weight: Font.Bold
        }
    }
    Loader {
        id: titleField
        x: 16
        y: 20
        width: parent.width - 32
        active: false
        source: "CardTitleField.qml"
        onLoaded: {
            const field = item as CardTitleField;
            field.begin(root.name);
            field.committed.connect(root.commitName);
            field.cancelled.connect(root.endRename);
        }
    }

    CardPreview {
        id: preview
        x: 34
        y: title.y + title.height + 8 + 12 - 4
        height: parent.height - y
        visible: !root.isEmpty
        apps: root.apps
        hovered: root.isHovering
    }
    MouseArea {
        anchors.fill: preview
        acceptedButtons: Qt.NoButton
        enabled: preview.overflows && !root.wheelPasses
        onWheel: wheel => {
            if (wheel.pixelDelta.y !== 0)
                wheel.accepted = preview.scrollBy(-wheel.pixelDelta.y, false);
            else
                wheel.accepted = preview.scrollBy(-wheel.angleDelta.y / 2, true);
        }
    }
    TapHandler {
        parent: preview
        acceptedDevices: PointerDevice.TouchScreen
        onTapped: root.expanded()
    }
    Loader {
        id: addition
        x: 20
        y: preview.y
        width: parent.width - 40
        height: preview.height
        active: root.isEmpty
        source: "CardAddApps.qml"
        onLoaded: (item as CardAddApps).clicked.connect(root.addApps)
    }
    function addApps() {
        if (isFolder)
            Library.openPicker(folderId);
    }

    FocusRing {
        cornerRadius: Theme.cardRadius
        visible: root.focused
    }
}
