pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The applications as a grid of tiles. Tab reaches it, arrows move inside it, Return or Space launches. */
GridView {
    id: root

    required property Window hostWindow
    /*! The user went up from the first row. */
    signal escapedUp

    readonly property AppColumns columns: AppColumns {
        width: root.width
    }
    readonly property int rowSpacing: 32
    readonly property int textHeight: Math.ceil(metrics.height) * 2

    topMargin: 32
    bottomMargin: 32 - rowSpacing
    leftMargin: columns.leading
    // Room for exactly the columns and the spacing behind the last one.
    rightMargin: width - columns.leading - columns.count * cellWidth
    cellWidth: columns.columnWidth + columns.spacing
    cellHeight: 8 + 90 + 8 + textHeight + 8 + rowSpacing

    model: ViewModel.filteredApps
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

    function launchCurrent() {
        const tile = currentItem as AppItemView;
        if (tile)
            tile.launch();
    }
    Keys.onReturnPressed: launchCurrent()
    Keys.onEnterPressed: launchCurrent()
    Keys.onSpacePressed: launchCurrent()
    Keys.onMenuPressed: {
        const tile = currentItem as AppItemView;
        if (tile)
            tileMenu.popUpFor(tile, tile.width / 2, tile.height / 2);
    }
    Keys.onUpPressed: event => {
        if (currentIndex < columns.count) {
            currentIndex = -1;
            escapedUp();
        } else {
            event.accepted = false;
        }
    }

    delegate: AppItemView {
        hostWindow: root.hostWindow
        width: root.columns.columnWidth
        height: root.cellHeight - root.rowSpacing
        focused: GridView.isCurrentItem && root.activeFocus
        onContextMenuRequested: (x, y) => tileMenu.popUpFor(this, x, y)
        onIsHoveringChanged: {
            if (isHovering) {
                help.text = name;
                help.target = this;
            } else if (help.target === this) {
                help.target = null;
            }
        }
    }

    FontMetrics {
        id: metrics
        font {
            pixelSize: 12
            weight: Font.Medium
        }
    }
    HelpText {
        id: help
        parent: root
        z: 1
    }
    TileMenuHost {
        id: tileMenu
    }
    WheelScroll {
        view: root
    }
}
