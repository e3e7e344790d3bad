pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The keys of the library's commands. */
Item {
    id: root

    Shortcut {
        sequence: "Ctrl+K"
        onActivated: Notifications.quillbaySearchFocusRequested()
    }
    Shortcut {
        sequence: "Ctrl+1"
        onActivated: Library.selection = "allApps"
    }
    Shortcut {
        sequence: "Ctrl+2"
        onActivated: Library.selection = "newlyAdded"
    }
    Shortcut {
        sequence: "Ctrl+3"
        onActivated: Library.selection = "recents"
    }
    Shortcut {
        sequence: "Ctrl+4"
        onActivated: Library.selection = "favorites"
    }
}
