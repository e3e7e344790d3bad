pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Switches between the workspaces, makes new ones, and with two or more manages them. */
PanelMenu {
    id: root

    property SidebarSheets sheets

    function popUpAbove(anchor: Item) {
        parent = anchor;
        open();
    }

    x: 12
    y: -height - 2

    PanelMenuItem {
        text: qsTr("Workspaces")
        enabled: false
    }
    Instantiator {
        model: Workspaces
        delegate: PanelMenuItem {
            required property string workspaceId
            required property string name
            required property bool isActive
            text: name
            symbol: isActive ? "checkmark" : ""
            Accessible.checkable: true
            Accessible.checked: isActive
            onTriggered: Qt.callLater(Library.activateWorkspace, workspaceId) // qmllint disable type
        }
        onObjectAdded: (index, object) => root.insertItem(index + 1, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }
    PanelMenuSeparator {}
    PanelMenuItem {
        text: qsTr("Create Workspace...")
        symbol: "plus"
        onTriggered: root.sheets.createWorkspace()
    }
    Instantiator {
        active: Workspaces.count > 1
        delegate: PanelMenu {
            id: manage
            title: qsTr("Manage")

            Instantiator {
                model: Workspaces
                delegate: PanelMenu {
                    id: one
                    required property string workspaceId
                    required property string name
                    required property string icon
                    required property string color
                    required property bool isActive
                    title: name

                    PanelMenuItem {
                        text: qsTr("Edit...")
                        onTriggered: root.sheets.editWorkspace(one.workspaceId, one.name, one.icon, one.color)
                    }
                    PanelMenuItem {
                        text: qsTr("Delete")
                        destructive: true
                        visible: !one.isActive
                        enabled: visible
                        onTriggered: Qt.callLater(Library.deleteWorkspace, one.workspaceId) // qmllint disable type
                    }
                }
                onObjectAdded: (index, object) => manage.insertMenu(index, object)
                onObjectRemoved: (index, object) => manage.removeMenu(object)
            }
        }
        onObjectAdded: (index, object) => root.addMenu(object)
        onObjectRemoved: (index, object) => root.removeMenu(object)
    }
}
