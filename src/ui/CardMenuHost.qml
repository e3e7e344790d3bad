pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Makes the cards' context menus when they are first asked for. */
Item {
    id: root

    function popUpFor(card: CategoryCardView, x: real, y: real) {
        if (card.isFolder) {
            folderMenu.active = true;
            const menu = folderMenu.item as FolderCardMenu;
            menu.card = card;
            menu.folderId = card.folderId;
            menu.inHidden = Library.selection === "hidden";
            menu.popup(card, x, y);
        } else {
            categoryMenu.active = true;
            const menu = categoryMenu.item as CategoryCardMenu;
            menu.category = card.name;
            menu.folders = Library.folders();
            menu.popup(card, x, y);
        }
    }

    Loader {
        id: folderMenu
        active: false
        source: "FolderCardMenu.qml"
    }
    Loader {
        id: categoryMenu
        active: false
        source: "CategoryCardMenu.qml"
    }
}
