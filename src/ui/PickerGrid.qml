pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The applications to select from. Arrows move, Space selects; up from the first row leaves it. */
GridView {
    id: root

    required property AppPicker picker
    readonly property int rowSpacing: 20

    signal escapedUp

    readonly property AdaptiveColumns columns: AdaptiveColumns {
        width: root.width
        minimum: 90
        gap: 20
        padding: 24
    }

    function toggleCurrent() {
        const cell = currentItem as PickerCell;
        if (cell)
            picker.toggle(cell.path);
    }

    topMargin: 24
    bottomMargin: 24 - rowSpacing
    leftMargin: columns.leading
    rightMargin: width - columns.leading - columns.count * cellWidth
    cellWidth: columns.columnWidth + columns.spacing
    cellHeight: 10 + 56 + 8 + 2 * Math.ceil(metrics.height) + 10 + rowSpacing

    model: picker
    clip: true
    reuseItems: true
    cacheBuffer: 0
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    keyNavigationEnabled: true
    highlightFollowsCurrentItem: true
    currentIndex: -1

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Applications")
    Accessible.focusable: true

    onActiveFocusChanged: {
        if (activeFocus && currentIndex < 0 && count > 0)
            currentIndex = 0;
    }
    Keys.onSpacePressed: toggleCurrent()
    Keys.onUpPressed: event => {
        if (currentIndex < columns.count)
            escapedUp();
        else
            event.accepted = false;
    }

    delegate: PickerCell {
        width: root.columns.columnWidth
        focused: GridView.isCurrentItem && root.activeFocus
        onToggled: root.picker.toggle(path)
    }

    FontMetrics {
        id: metrics
        font {
            pixelSize: 11
            weight: Font.Bold
        }
    }
    ColumnRecount {
        view: root
    }
    WheelScroll {
        view: root
    }
    ThinScrollBar {
        view: root
    }
}
