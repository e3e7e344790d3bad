pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The window's own header with the search field in the middle. Dragging it moves the
    window, a double click asks for it to be maximised. */
Item {
    id: root

    required property Window window
    property alias searchField: searchField
    /*! How much of the header's end the window's buttons take. */
    property real endWidth: 0

    signal maximizeToggled

    implicitHeight: 64

    PointHandler {
        id: dragPoint
        property bool moving: false
        acceptedButtons: Qt.LeftButton
        acceptedDevices: PointerDevice.AllDevices
        onActiveChanged: moving = false
        onPointChanged: {
            if (!active || moving)
                return;
            const way = Qt.point(point.position.x - point.pressPosition.x, point.position.y - point.pressPosition.y);
            if (Math.abs(way.x) + Math.abs(way.y) >= Qt.styleHints.startDragDistance) {
                moving = true;
                root.window.startSystemMove();
            }
        }
    }
    TapHandler {
        acceptedButtons: Qt.LeftButton
        gesturePolicy: TapHandler.DragThreshold
        onDoubleTapped: root.maximizeToggled()
    }

    SearchField {
        id: searchField
        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 2 * (root.endWidth + 16))
    }
}
