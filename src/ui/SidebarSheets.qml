pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! What the sidebar asks in panels of their own; each is made when it is first asked for. They open in the next turn,
    when the menu that asked has given the keyboard back. */
Item {
    id: root

    function later(loader: Loader, open: var) {
        // qmllint disable type
        Qt.callLater(() => {
            loader.active = true;
            open(loader.item);
        });
        // qmllint enable type
    }
    function createFolder() {
        later(folderSheet, sheet => sheet.openNew());
    }
    function editFolder(folder: string) {
        later(folderSheet, sheet => sheet.openFor(folder, Library.folder(folder)));
    }
    function deleteFolder(folder: string) {
        later(deleteAlert, alert => alert.openFor(folder, Library.folder(folder)));
    }
    function createWorkspace() {
        later(workspaceSheet, sheet => sheet.openNew());
    }
    function editWorkspace(workspace: string, name: string, icon: string, color: string) {
        later(workspaceSheet, sheet => sheet.openFor(workspace, name, icon, color));
    }
    function pickColor(row: FolderRow) {
        Qt.callLater(openPopover, "FolderColorPickerPopoverView.qml", row); // qmllint disable type
    }
    function pickIcon(row: FolderRow) {
        Qt.callLater(openPopover, "FolderIconPickerPopoverView.qml", row); // qmllint disable type
    }
    function openPopover(file: string, row: FolderRow) {
        popover.setSource(file, {
            folderId: row.folderId,
            parent: row
        });
        popover.panel.open();
    }
    function closePopover() {
        if (popover.panel)
            popover.panel.close();
    }

    Loader {
        id: folderSheet
        active: false
        source: "FolderSheet.qml"
    }
    Loader {
        id: deleteAlert
        active: false
        source: "DeleteFolderAlert.qml"
    }
    Loader {
        id: workspaceSheet
        active: false
        source: "WorkspaceSheet.qml"
    }
    Loader {
        id: popover
        readonly property var panel: item
    }
}
