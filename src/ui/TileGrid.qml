pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The applications as a grid of tiles. Tab reaches it, arrows move inside it, Return or Space launches. */
GridView {
    id: root

    property AppListModel apps
    property ColumnsOfWidth columns: AppColumns {
        width: root.width
    }
    property int rowSpacing: 32
    property int topPadding: 32
    property int bottomPadding: 32
    /*! Taken off the width at both ends before the columns are laid out. */
    property int inset: 0
    /*! Tiles that get another place go there instead of standing there at once. */
    property bool glides: DragSource.active
    /*! The folder whose members these are, in their order; empty where they stand in no such order. */
    property string folder

    /*! An application was launched. */
    signal launched
    /*! The user went up from the first row. */
    signal escapedUp

    readonly property int textHeight: Math.ceil(metrics.height) * 2

    topMargin: topPadding
    bottomMargin: bottomPadding - rowSpacing
    leftMargin: columns.leading + inset
    onLeftMarginChanged: contentX = originX - leftMargin
    // Room for exactly the columns and the spacing behind the last one.
    rightMargin: width - columns.leading - inset - columns.count * cellWidth
    cellWidth: columns.columnWidth + columns.spacing
    cellHeight: 8 + 90 + 8 + textHeight + 8 + rowSpacing

    // A tile that was kept for another use is not brought up to date by another model.
    onAppsChanged: {
        reuseItems = false;
        model = apps;
        currentIndex = -1; // the view makes the first one current
        reuseItems = true;
    }
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

    function toTop() {
        contentY = originY - topMargin;
    }
    function launchCurrent() {
        const tile = currentItem as AppItemView;
        if (tile)
            tile.launch();
    }
    function popUpForCurrent() {
        const tile = currentItem as AppItemView;
        if (tile)
            tileMenu.popUpInTheMiddle(tile);
    }
    Keys.onReturnPressed: launchCurrent()
    Keys.onEnterPressed: launchCurrent()
    Keys.onSpacePressed: launchCurrent()
    Keys.onMenuPressed: popUpForCurrent()
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Home)
            currentIndex = 0;
        else if (event.key === Qt.Key_End)
            currentIndex = count - 1;
        else if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
            popUpForCurrent();
        else
            event.accepted = false;
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
        width: root.columns.columnWidth
        height: root.cellHeight - root.rowSpacing
        focused: GridView.isCurrentItem && root.activeFocus
        passing: root.isPassing
        targeted: drops.target !== "" && drops.target === path
        onLaunched: root.launched()
        onContextMenuRequested: (x, y) => tileMenu.popUpFor(this, x, y)
        onIsHoveringChanged: {
            if (isHovering && !DragSource.active) {
                help.text = name;
                help.target = this;
            } else if (help.target === this) {
                help.target = null;
            }
        }
    }

    move: Transition {
        enabled: root.glides
        SpringMotion {
            properties: "x,y"
        }
    }
    displaced: Transition {
        enabled: root.glides
        SpringMotion {
            properties: "x,y"
        }
    }

    property bool isPassing: false
    onContentYChanged: {
        isPassing = true;
        standstill.restart();
    }
    Timer {
        id: standstill
        interval: 80
        onTriggered: root.isPassing = false
    }
    FocusRing {
        parent: root.currentItem
        cornerRadius: 20
        visible: root.activeFocus
    }
    TileDrops {
        id: drops
        parent: root
        anchors.fill: parent
        enabled: root.folder !== ""
        grid: root
        folder: root.folder
    }
    FontMetrics {
        id: metrics
        font {
            pixelSize: 12
            weight: Font.Medium
        }
    }
    readonly property bool isDragging: DragSource.active
    onIsDraggingChanged: help.target = null
    HelpText {
        id: help
        parent: root
        z: 1
    }
    TileMenuHost {
        id: tileMenu
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
