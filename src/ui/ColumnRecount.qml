pragma ComponentBehavior: Bound

import QtQuick

/*! Keeps a grid's columns right. The view counts them when its width changes, which is before the margins and cells follow:
    turning it there and back makes it count again. */
Connections {
    id: root

    required property GridView view

    function recount() {
        view.flow = Grid.TopToBottom;
        view.flow = Grid.LeftToRight;
    }

    target: view
    function onRightMarginChanged() {
        recount();
    }
    function onCellWidthChanged() {
        recount();
    }
}
