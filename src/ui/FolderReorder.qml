pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Moves root folders of the sidebar by the mouse, their subfolders with them. A line shows where the dragged one would
    go; Escape leaves it where it was. Lies over the list. */
Item {
    id: root

    required property ListView view
    required property real rowHeight

    /*! The dragged folder's place among the root folders; -1 while none is dragged. */
    property int source: -1
    /*! Before which root folder it would go. */
    property int target: -1
    readonly property bool active: source >= 0
    readonly property int firstRow: active ? FolderTree.rowOfRoot(source) : -1
    readonly property int endRow: active ? FolderTree.rowOfRoot(source + 1) : -1

    /*! Where the first folder lies, in this item's coordinates. */
    function listTop(): real {
        return view.originY - view.contentY;
    }
    function begin(y: real) {
        const row = Math.floor((y - listTop()) / rowHeight);
        source = FolderTree.rootIndexAt(row);
    }
    function aim(y: real) {
        const end = listTop() + FolderTree.count * rowHeight;
        target = FolderTree.nearestRoot(Math.round((Math.min(y, end) - listTop()) / rowHeight));
        line.y = listTop() + FolderTree.rowOfRoot(target) * rowHeight - 1;
        scroll.speed = y < 24 ? -8 : y > height - 24 ? 8 : 0;
    }
    function finish() {
        const from = source;
        source = -1;
        if (from >= 0 && target !== from && target !== from + 1)
            Library.moveRootFolder(from, target);
    }
    /*! By one place, up (-1) or down (1). */
    function moveBy(row: int, step: int) {
        const from = FolderTree.rootIndexAt(row);
        if (from >= 0 && from + step >= 0 && FolderTree.rowOfRoot(from + step) < FolderTree.count)
            Library.moveRootFolder(from, step > 0 ? from + 2 : from - 1);
    }

    DragHandler {
        id: drag
        target: null
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        cursorShape: root.active ? Qt.ClosedHandCursor : undefined
        onActiveChanged: {
            if (active)
                root.begin(centroid.pressPosition.y);
            else
                root.finish();
        }
        onCentroidChanged: {
            if (root.active)
                root.aim(centroid.position.y);
        }
    }
    Shortcut {
        sequence: "Escape"
        enabled: root.active
        onActivated: root.source = -1
    }
    Timer {
        id: scroll
        property real speed: 0
        interval: 16
        repeat: true
        running: root.active && speed !== 0
        onTriggered: {
            const first = root.view.originY - root.view.topMargin;
            const last = Math.max(first, root.view.originY + root.view.contentHeight + root.view.bottomMargin - root.view.height);
            root.view.contentY = Math.max(first, Math.min(last, root.view.contentY + speed));
            root.aim(drag.centroid.position.y);
        }
    }
    Rectangle {
        id: line
        x: 16
        width: root.width - 32
        height: 2
        visible: root.active
        color: Theme.blue
    }
}
