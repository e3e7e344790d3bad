pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The commands of the library, with their keys. */
PanelMenu {
    id: root

    title: qsTr("Library")

    PanelMenuItem {
        text: qsTr("Search Apps")
        hint: "Ctrl+K"
        onTriggered: Qt.callLater(Notifications.quillbaySearchFocusRequested) // qmllint disable type
    }
    PanelMenuSeparator {}
    PanelMenuItem {
        text: qsTr("All Apps")
        hint: "Ctrl+1"
        onTriggered: Library.selection = "allApps"
    }
    PanelMenuItem {
        text: qsTr("Newly Added")
        hint: "Ctrl+2"
        onTriggered: Library.selection = "newlyAdded"
    }
    PanelMenuItem {
        text: qsTr("Recents")
        hint: "Ctrl+3"
        onTriggered: Library.selection = "recents"
    }
    PanelMenuItem {
        text: qsTr("Favorites")
        hint: "Ctrl+4"
        onTriggered: Library.selection = "favorites"
    }
}
