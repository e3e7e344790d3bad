pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What was found, the choice of what goes, and how. */
Item {
    id: root

    required property UninstallerFlow flow

    readonly property bool mayDelete: flow.selectedCount > 0 && !flow.isSystemApp

    signal dismissed
    signal permanentRequested

    component Divider: Rectangle {
        width: root.width
        height: 1
        color: Theme.fade(Theme.primary, 0.2 * 0.5)
    }

    Column {
        id: top
        width: parent.width

        Rectangle {
            width: parent.width
            height: Math.ceil(warning.implicitHeight) + 20
            visible: root.flow.isSystemApp
            color: Theme.fade(Theme.yellow, 0.12)

            Symbol {
                id: shield
                x: 20
                anchors.verticalCenter: parent.verticalCenter
                name: "lock.shield.fill"
                color: Theme.yellow
            }
            Text {
                id: warning
                anchors {
                    left: shield.right
                    leftMargin: 10
                    right: parent.right
                    rightMargin: 20
                    verticalCenter: parent.verticalCenter
                }
                text: Wording.of(qsTr("System apps are protected by macOS SIP and cannot be deleted."))
                wrapMode: Text.Wrap
                color: Theme.fade(Theme.primary, 0.8)
                font {
                    pixelSize: 12
                    weight: Font.Medium
                }
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
        }
        Item {
            width: parent.width
            height: stats.height + 24

            Row {
                id: stats
                x: 20
                y: 12
                spacing: 24

                StatPill {
                    label: qsTr("Items found")
                    value: root.flow.itemCount
                    color: Theme.primary
                }
                StatPill {
                    label: qsTr("Selected")
                    value: root.flow.selectedCount
                    color: Theme.blue
                }
                StatPill {
                    label: qsTr("To free")
                    value: root.flow.formattedTotalSize
                    color: Theme.orange
                }
            }
            Row {
                anchors {
                    right: parent.right
                    rightMargin: 20
                    verticalCenter: parent.verticalCenter
                }
                spacing: 24

                GhostButtonStyle {
                    text: qsTr("Select All")
                    onClicked: root.flow.selectAll()
                }
                GhostButtonStyle {
                    text: qsTr("Deselect All")
                    onClicked: root.flow.deselectAll()
                }
            }
        }
        Divider {}
    }
    ResidualFileList {
        anchors {
            left: parent.left
            right: parent.right
            top: top.bottom
            bottom: actions.top
        }
        flow: root.flow
    }
    Item {
        id: actions
        anchors.bottom: parent.bottom
        width: parent.width
        height: buttons.height + 32

        Divider {}
        GhostButtonStyle {
            x: 20
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Cancel")
            onClicked: root.dismissed()
        }
        Row {
            id: buttons
            anchors {
                right: parent.right
                rightMargin: 20
                verticalCenter: parent.verticalCenter
            }
            spacing: 12

            DestructiveButtonStyle {
                text: qsTr("Delete Permanently")
                symbol: "trash"
                enabled: root.mayDelete
                onClicked: root.permanentRequested()
            }
            PrimaryButtonStyle {
                text: qsTr("Move to Trash")
                symbol: "trash.fill"
                enabled: root.mayDelete
                onClicked: root.flow.moveToTrash()
            }
        }
    }
}
