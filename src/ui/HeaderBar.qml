import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The window's own header: the search field in the middle, the window's buttons at the end. Dragging it moves the
    window, a double click maximises it. */
Item {
    id: root

    required property Window window
    property alias searchField: searchField
    /*! What Tab reaches from the search field. */
    property Item afterSearch: null

    implicitHeight: 64

    function toggleMaximized() {
        if (root.window.visibility === Window.Maximized)
            root.window.showNormal();
        else
            root.window.showMaximized();
    }

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
        onDoubleTapped: root.toggleMaximized()
    }

    SearchField {
        id: searchField
        anchors.centerIn: parent
        KeyNavigation.tab: root.afterSearch
        width: Math.min(implicitWidth, root.width - 2 * (buttons.width + buttons.anchors.rightMargin + 16))
    }

    Row {
        id: buttons
        anchors {
            right: parent.right
            rightMargin: 16
            verticalCenter: parent.verticalCenter
        }
        spacing: 8

        WindowButton {
            symbol: "minus"
            label: qsTr("Minimize")
            onClicked: root.window.showMinimized()
        }
        WindowButton {
            symbol: "square"
            label: root.window.visibility === Window.Maximized ? qsTr("Restore") : qsTr("Maximize")
            onClicked: root.toggleMaximized()
        }
        WindowButton {
            symbol: "xmark"
            label: qsTr("Close")
            onClicked: root.window.close()
        }
    }
}
