pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The questions and the message that come up over the uninstaller. */
Item {
    id: root

    required property UninstallerFlow flow

    property bool showPermanentDeleteAlert: false

    Loader {
        active: root.showPermanentDeleteAlert
        sourceComponent: AlertSheet {
            title: qsTr("Permanently Delete Files")
            message: qsTr("This will permanently delete %1 items (%2). This cannot be undone.").arg(root.flow.selectedCount).arg(root.flow.formattedTotalSize)
            confirmText: qsTr("Permanently Delete")
            onConfirmed: {
                root.showPermanentDeleteAlert = false;
                root.flow.deletePermanently();
            }
            onDismissed: root.showPermanentDeleteAlert = false
        }
    }
    Loader {
        active: root.flow.hasPackageQuestion
        sourceComponent: AlertSheet {
            title: qsTr("Remove Package")
            message: {
                const folder = root.flow.packageDataFolder;
                const data = folder === "" ? [] : [qsTr("Its data in %1 goes too.").arg(folder)];
                return [root.flow.packageText, ...data, root.flow.packageTrashNote].join("\n");
            }
            items: root.flow.packagesToRemove
            confirmText: qsTr("Remove")
            dismissText: qsTr("Keep")
            onConfirmed: root.flow.approve()
            onDismissed: root.flow.decline()
        }
    }
    Loader {
        active: root.flow.showPermissionError
        sourceComponent: AlertSheet {
            title: qsTr("Cannot Delete Files")
            message: root.flow.permissionErrorMessage
            dismissText: qsTr("OK")
            onDismissed: root.flow.dismissPermissionError()
        }
    }
}
