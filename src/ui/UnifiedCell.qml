pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! A cell of the unified grid: a card in the middle of its column. */
Item {
    id: root

    required property string kind
    required property string identifier
    required property string folderId
    required property string name
    required property AppListModel apps
    property bool focused: false
    readonly property bool isCard: kind !== "add"
    readonly property bool isHovering: cardView.isHovering
    readonly property bool isEditingName: cardView.isEditingName
    readonly property string help: cardView.help

    property alias targeted: cardView.targeted
    property alias wheelPasses: cardView.wheelPasses

    signal expanded
    signal contextMenuRequested(CategoryCardView card, real x, real y)
    /*! The keyboard is free again. */
    signal nameEdited

    function beginRename() {
        cardView.beginRename();
    }
    function popUp() {
        if (isCard)
            contextMenuRequested(cardView, cardView.width / 2, cardView.height / 2);
    }
    function activate() {
        const other = addFolder.item as AddFolderCard;
        if (other)
            other.press();
        else
            expanded();
    }

    CategoryCardView {
        id: cardView
        x: Math.round((root.width - width) / 2)
        visible: root.isCard
        identifier: root.identifier
        folderId: root.folderId
        name: root.name
        apps: root.apps
        movable: true
        focused: root.focused && root.isCard
        onExpanded: root.expanded()
        onContextMenuRequested: (x, y) => root.contextMenuRequested(cardView, x, y)
        onNameEdited: root.nameEdited()
    }
    Loader {
        id: addFolder
        x: cardView.x
        active: !root.isCard
        source: "AddFolderCard.qml"
        onLoaded: (item as AddFolderCard).focused = Qt.binding(() => root.focused)
    }
}
