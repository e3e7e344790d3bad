pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The questions and the message that come up over the uninstaller. */
Item {
    id: root

    required property UninstallerFlow flow

    property bool showPermanentDeleteAlert: false

    function packageMessage(): string {
        const folder = flow.packageDataFolder;
        const data = folder === "" ? [] : [qsTr("Its data in %1 goes too.").arg(folder)];
        return [flow.packageText, ...data, flow.packageTrashNote].join("\n");
    }

    component Alert: Loader {
        id: alert

        required property bool wanted

        signal confirmed
        signal dismissed

        function ask(texts: var) {
            setSource("AlertSheet.qml", texts);
        }

        onWantedChanged: {
            if (!wanted)
                source = "";
        }

        Connections {
            target: alert.item
            ignoreUnknownSignals: true
            function onConfirmed() {
                alert.confirmed();
            }
            function onDismissed() {
                alert.dismissed();
            }
        }
    }

    Alert {
        wanted: root.showPermanentDeleteAlert
        onWantedChanged: {
            if (wanted)
                ask({
                    title: qsTr("Permanently Delete Files"),
                    message: qsTr("This will permanently delete %1 items (%2). This cannot be undone.").arg(root.flow.selectedCount).arg(root.flow.formattedTotalSize),
                    confirmText: qsTr("Permanently Delete")
                });
        }
        onConfirmed: {
            root.showPermanentDeleteAlert = false;
            root.flow.deletePermanently();
        }
        onDismissed: root.showPermanentDeleteAlert = false
    }
    Alert {
        wanted: root.flow.hasPackageQuestion
        onWantedChanged: {
            if (wanted)
                ask({
                    title: qsTr("Remove Package"),
                    message: root.packageMessage(),
                    items: root.flow.packagesToRemove,
                    confirmText: qsTr("Remove"),
                    dismissText: qsTr("Keep")
                });
        }
        onConfirmed: root.flow.approve()
        onDismissed: root.flow.decline()
    }
    Alert {
        wanted: root.flow.showPermissionError
        onWantedChanged: {
            if (wanted)
                ask({
                    title: qsTr("Cannot Delete Files"),
                    message: root.flow.permissionErrorMessage,
                    dismissText: qsTr("OK")
                });
        }
        onDismissed: root.flow.dismissPermissionError()
    }
}
