pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The library's lists and the folders. The selection moves with the arrows, Home and End; Alt with an arrow moves the
    selected root folder instead. */
Item {
    id: root

    readonly property string selection: Library.selection
    readonly property string folderPrefix: "folder:"
    /*! The row whose menu is open. */
    property FolderRow markedRow: null

    signal newFolderRequested
    signal menuRequested(FolderRow row, real x, real y)
    /*! What hangs on a row has to go. */
    signal scrolled

    function keys(): var {
        return Array.from(library.entries, entry => entry.key);
    }
    function rowOfSelection(): int {
        return selection.startsWith(folderPrefix) ? FolderTree.rowOf(selection.slice(folderPrefix.length)) : -1;
    }
    /*! Counted over both parts; -1 for a selection that is not listed. */
    function placeOfSelection(): int {
        const row = rowOfSelection();
        return row >= 0 ? library.entries.length + row : keys().indexOf(selection);
    }
    function select(place: int) {
        const before = library.entries.length;
        const valid = Math.max(0, Math.min(place, before + FolderTree.count - 1));
        Library.selection = valid < before ? library.entries[valid].key : folderPrefix + FolderTree.folderAt(valid - before);
    }
    function reveal() {
        const row = rowOfSelection();
        if (row >= 0) {
            view.positionViewAtIndex(row, ListView.Contain);
            return;
        }
        const entry = library.entries[placeOfSelection()];
        if (entry && entry.mapToItem(view, 0, 0).y < 0)
            view.toTop();
    }
    function popUpForSelection() {
        const row = view.itemAtIndex(rowOfSelection()) as FolderRow;
        if (row)
            row.requestMenu();
    }

    onSelectionChanged: reveal()
    onActiveFocusChanged: {
        if (activeFocus)
            reveal();
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Sidebar")
    Accessible.focusable: true

    Keys.enabled: activeFocus
    Keys.onPressed: event => {
        const alt = event.modifiers & Qt.AltModifier;
        event.accepted = true;
        if (alt && (event.key === Qt.Key_Up || event.key === Qt.Key_Down))
            reorder.moveBy(rowOfSelection(), event.key === Qt.Key_Up ? -1 : 1);
        else if (event.key === Qt.Key_Up)
            select(placeOfSelection() - 1);
        else if (event.key === Qt.Key_Down)
            select(placeOfSelection() + 1);
        else if (event.key === Qt.Key_Home)
            select(0);
        else if (event.key === Qt.Key_End)
            select(library.entries.length + FolderTree.count);
        else if (event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
            popUpForSelection();
        else
            event.accepted = false;
    }

    ListView {
        id: view

        anchors.fill: parent
        model: FolderTree
        clip: true
        reuseItems: true
        cacheBuffer: 0
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        currentIndex: -1
        // Room for what stands before and behind the folders and scrolls with them.
        topMargin: library.height
        bottomMargin: newFolder.height
        onTopMarginChanged: toTop()
        onContentYChanged: root.scrolled()

        function toTop() {
            contentY = originY - topMargin;
        }
        function toEnd() {
            contentY = Math.max(originY - topMargin, originY + contentHeight + bottomMargin - height);
        }

        delegate: FolderRow {
            id: row
            width: view.width
            selected: root.selection === root.folderPrefix + folderId
            focused: selected && root.activeFocus
            marked: root.markedRow === row
            moving: index >= reorder.firstRow && index < reorder.endRow
            onPicked: Library.selection = root.folderPrefix + folderId
            onMenuRequested: (x, y) => root.menuRequested(row, x, y)
        }

        WheelScroll {
            view: view
        }
        ThinScrollBar {
            view: view
        }
    }
    SidebarLibrary {
        id: library
        parent: view.contentItem
        y: view.originY - height
        width: view.width
        selection: root.selection
        focused: root.activeFocus
    }
    NewFolderButton {
        id: newFolder
        parent: view.contentItem
        y: view.originY + view.contentHeight
        width: view.width
        height: implicitHeight
        onPicked: root.newFolderRequested()
        onActiveFocusChanged: {
            if (activeFocus)
                view.toEnd();
        }
    }
    FolderReorder {
        id: reorder
        anchors.fill: parent
        view: view
        rowHeight: 32
    }
}
