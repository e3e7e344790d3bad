pragma ComponentBehavior: Bound

import QtQuick

/*! The edges and corners by which a window without a frame of the desktop's is resized. */
Item {
    id: root

    /*! Any window, those that are made in C++ included. */
    required property var window
    readonly property int grip: 6

    Item {
        id: grips

        /*! The desktop has taken the pointer, and under Wayland nobody tells of the button's release: an edge that waited
            for it would have the next press too. */
        function letGo() {
            enabled = false;
            enabled = true;
        }

        anchors.fill: parent

        Grip { edges: Qt.LeftEdge; cursorShape: Qt.SizeHorCursor; width: root.grip; height: root.height }
        Grip { edges: Qt.RightEdge; cursorShape: Qt.SizeHorCursor; x: root.width - root.grip; width: root.grip; height: root.height }
        Grip { edges: Qt.TopEdge; cursorShape: Qt.SizeVerCursor; width: root.width; height: root.grip }
        Grip { edges: Qt.BottomEdge; cursorShape: Qt.SizeVerCursor; y: root.height - root.grip; width: root.width; height: root.grip }

        Corner { edges: Qt.TopEdge | Qt.LeftEdge; cursorShape: Qt.SizeFDiagCursor }
        Corner { edges: Qt.TopEdge | Qt.RightEdge; cursorShape: Qt.SizeBDiagCursor; x: root.width - width }
        Corner { edges: Qt.BottomEdge | Qt.LeftEdge; cursorShape: Qt.SizeBDiagCursor; y: root.height - height }
        Corner { edges: Qt.BottomEdge | Qt.RightEdge; cursorShape: Qt.SizeFDiagCursor; x: root.width - width; y: root.height - height }
    }

    component Grip: MouseArea {
        required property int edges
        hoverEnabled: true
        onPressed: {
            if (root.window.startSystemResize(edges))
                Qt.callLater(grips.letGo); // qmllint disable type
        }
    }
    component Corner: Grip {
        width: 2 * root.grip
        height: 2 * root.grip
    }
}
