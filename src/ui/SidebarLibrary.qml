pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! What stands above the folders in the sidebar: the library's own lists, and the title of the folders. */
Column {
    id: root

    required property string selection
    /*! The list has the keyboard. */
    required property bool focused
    readonly property list<Entry> entries: [allApps, newlyAdded, recents, favorites, hidden]

    component Entry: SidebarRow {
        required property string key
        readonly property SidebarLibrary section: parent as SidebarLibrary
        width: section.width
        selected: section.selection === key
        focused: selected && section.focused
        onPicked: Library.selection = key
    }

    SidebarTitle {
        width: parent.width
        text: qsTr("Library")
    }
    Entry {
        id: allApps
        key: "allApps"
        label: qsTr("All Apps")
        symbol: "square.grid.2x2"
    }
    Entry {
        id: newlyAdded
        key: "newlyAdded"
        label: qsTr("Newly Added")
        symbol: "plus.circle.fill"
    }
    Entry {
        id: recents
        key: "recents"
        label: qsTr("Recent Apps")
        symbol: "clock"
    }
    Entry {
        id: favorites
        key: "favorites"
        label: qsTr("Favorites")
        symbol: "star"
    }
    Entry {
        id: hidden
        key: "hidden"
        label: qsTr("Hidden Apps")
        symbol: "eye.slash"
    }
    SidebarTitle {
        width: parent.width
        topPadding: 18
        text: qsTr("Folders")
    }
}
