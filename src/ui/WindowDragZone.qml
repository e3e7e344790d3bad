pragma ComponentBehavior: Bound

import QtQuick

/*! Where dragging moves the window. */
Item {
    id: root

    /*! Any window, those that are made in C++ included. */
    required property var window
    signal doubleClicked

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
        onDoubleTapped: root.doubleClicked()
    }
}
