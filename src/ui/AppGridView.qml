pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Everything right of the sidebar: the header with the search field, and below it the layout that belongs to the
    selection. */
FocusScope {
    id: root

    required property Window hostWindow
    /*! The user goes through the selections by keyboard, which therefore stays there. */
    required property bool isBrowsing
    property alias showingColorPicker: tools.showingColorPicker
    property alias showingMeasureRuler: tools.showingMeasureRuler
    property alias showingQRGenerator: tools.showingQRGenerator
    property alias showingStickyNotes: tools.showingStickyNotes
    property alias showingSnippets: tools.showingSnippets
    readonly property bool isLoading: ViewModel.appFinder.isScanning && ViewModel.appFinder.isEmpty
    readonly property string selection: Library.selection
    readonly property bool isSearching: ViewModel.searchQuery !== ""
    readonly property bool isEmpty: ViewModel.filteredApps.count === 0

    /*! Before the window has its size every layout would be made for another. */
    readonly property bool isSized: content.width > 0 && content.height > 0

    readonly property string layout: {
        if (isLoading || !isSized)
            return "loading";
        if (selection === "hidden" && !ViewModel.isSecurityPasswordSet)
            return "setup";
        if (selection === "hidden" && !ViewModel.isHiddenUnlocked)
            return "locked";
        if (Library.isAllApps && Library.sortOption === "Category" && !isSearching)
            return "unified";
        if (selection === "hidden")
            return "hidden";
        if (isEmpty && Library.selectedFolder !== "")
            return "emptyFolder";
        return "tiles";
    }
    /*! Whatever changes it begins at the top again. */
    readonly property string identity: selection + "-" + Library.sortOption

    /*! Not while one of the lock's screens needs the keyboard. */
    function focusSearch() {
        if (selection !== "hidden" || ViewModel.isSecurityPasswordSet && ViewModel.isHiddenUnlocked)
            header.searchField.requestFocus();
    }

    /*! What stands first does not fade in. */
    property bool isReady: false
    /*! There has been a picture of it. */
    property bool isPainted: false
    Component.onCompleted: isReady = true

    readonly property string workspace: Workspaces.shownId
    onWorkspaceChanged: {
        if (!isReady)
            return;
        appearance.stop();
        workspaceAppearance.restart();
    }
    readonly property bool searchFocusTrigger: ViewModel.searchFocusTrigger
    onSearchFocusTriggerChanged: focusSearch()
    readonly property bool isHiddenUnlocked: ViewModel.isHiddenUnlocked
    onIsHiddenUnlockedChanged: {
        if (isHiddenUnlocked)
            header.searchField.requestFocus();
    }
    onSelectionChanged: {
        if (isReady)
            appearance.restart();
        if (!isBrowsing)
            focusSearch();
    }
    onIdentityChanged: {
        tileGrid.currentIndex = -1;
        tileGrid.toTop();
    }

    Accessible.role: Accessible.Pane
    Accessible.name: Library.title

    Rectangle {
        anchors.fill: parent
        visible: !Theme.dark && (root.selection.startsWith("folder:") || root.selection.startsWith("category:"))
        color: Theme.material("sidebar", false, false)
    }

    HeaderBar {
        id: header
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
        }
        window: root.hostWindow
        endWidth: tools.width + 16
        onMaximizeToggled: tools.toggleMaximized()
        Component.onCompleted: searchField.requestFocus()
    }

    Item {
        id: content
        anchors {
            left: parent.left
            right: parent.right
            top: header.bottom
            bottom: parent.bottom
        }

        TileGrid {
            id: tileGrid
            anchors.fill: parent
            visible: root.layout === "tiles"
            apps: root.layout === "tiles" ? ViewModel.filteredApps : null
            folder: root.isSearching ? "" : Library.selectedFolder
            onEscapedUp: root.focusSearch()
        }
        Loader {
            id: other
            anchors.fill: parent
            source: {
                switch (root.layout) {
                case "unified":
                    return "UnifiedPage.qml";
                case "hidden":
                    return "HiddenList.qml";
                case "emptyFolder":
                    return "FolderEmptyState.qml";
                }
                return "";
            }

            Connections {
                target: other.item
                ignoreUnknownSignals: true
                function onEscapedUp() {
                    root.focusSearch();
                }
            }
        }
        NumberAnimation {
            id: appearance
            target: content
            property: "opacity"
            from: 0
            to: 1
            duration: 180 * Theme.motion
        }
        EaseInOut {
            id: workspaceAppearance
            target: content
            property: "opacity"
            from: 0
            to: 1
            duration: 200 * Theme.motion
        }
    }
    component LockPlace: Fade {
        anchors.fill: content
        onLoaded: {
            // After the search field, should that have been promised the keyboard.
            if (!root.isBrowsing)
                Qt.callLater(forceActiveFocus); // qmllint disable type
        }
    }
    LockPlace {
        present: root.layout === "setup"
        source: "HiddenSetupPage.qml"
    }
    LockPlace {
        present: root.layout === "locked"
        source: "HiddenUnlockPage.qml"
    }
    Fade {
        anchors {
            horizontalCenter: content.horizontalCenter
            bottom: content.bottom
            bottomMargin: 32
        }
        present: ViewModel.biometricPrompt !== ""
        source: "FingerprintPrompt.qml"
    }
    // After the applications, so that Tab goes from the search field to them.
    HeaderTools {
        id: tools
        anchors {
            right: parent.right
            rightMargin: 16
            verticalCenter: header.verticalCenter
        }
        window: root.hostWindow
    }

    Presence {
        anchors.fill: content
        // What the first picture can already do without is never seen.
        present: root.isLoading && root.isPainted
        source: "ModernLoadingView.qml"
    }

    // Made while the cards are looked at, and kept: it opens at once.
    Loader {
        readonly property bool isNeeded: root.layout === "unified" || ExpandedCard.isExpanded
        onIsNeededChanged: {
            if (isNeeded)
                active = true;
        }
        anchors.fill: parent
        active: false
        asynchronous: !ExpandedCard.isExpanded
        source: "ExpandedPanel.qml"
    }
    Loader {
        active: ViewModel.showingAppPicker
        source: "AppPickerView.qml"
    }
    Loader {
        active: ViewModel.appToUninstall !== ""
        source: "UninstallerSheet.qml"
    }

    Connections {
        target: Notifications
        function onQuillbayHotkeyTriggered() {
            root.focusSearch();
        }
        function onQuillbaySearchFocusRequested() {
            root.focusSearch();
        }
        function onQuillbayAppReopened() {
            root.showingMeasureRuler = true;
        }
    }
    Connections {
        target: root.hostWindow
        enabled: !root.isPainted
        function onFrameSwapped() {
            root.isPainted = true;
        }
    }
    WindowReturn {
        window: root.hostWindow
        onReturned: root.focusSearch()
    }
}
