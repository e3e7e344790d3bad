pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Shows the workspace and asks for the menu of all. */
Item {
    id: root

    readonly property color tint: ColorHex.color(Workspaces.shownColor)

    signal menuRequested

    implicitHeight: 1 + 10 + 48 + 10
    activeFocusOnTab: true

    Accessible.role: Accessible.ButtonMenu
    Accessible.name: Workspaces.shownName
    Accessible.description: qsTr("Active Workspace")
    Accessible.focusable: true
    Accessible.onPressAction: menuRequested()
    Keys.onReturnPressed: menuRequested()
    Keys.onEnterPressed: menuRequested()
    Keys.onSpacePressed: menuRequested()
    Keys.onUpPressed: menuRequested()
    Keys.onDownPressed: menuRequested()

    VisualEffectView {
        anchors.fill: parent
        material: "ultraThin"
        blendingMode: "withinWindow"
    }
    Rectangle {
        width: parent.width
        height: 1
        color: Theme.fade(Theme.primary, 0.1)
    }
    Item {
        id: button
        x: 12
        y: 11
        width: root.width - 24
        height: 48

        Panel {
            id: plate
            readonly property bool isWorkspaceHovered: hover.hovered
            width: opacity > 0 ? parent.width : 0
            height: parent.height
            radius: 10
            color: Theme.fade(Theme.primary, 0.06)
            opacity: isWorkspaceHovered ? 1 : 0
            Behavior on opacity {
                EaseOut {
                    duration: 150 * Theme.motion
                }
            }
        }
        Panel {
            id: badge
            x: 10
            y: 8
            width: 32
            height: 32
            radius: 8
            color: Theme.fade(root.tint, 0.12)
            stroke: Theme.fade(root.tint, 0.24)
        }
        Symbol {
            anchors.centerIn: badge
            name: Workspaces.shownIcon
            size: 14
            weight: Font.DemiBold
            color: root.tint
        }
        Column {
            anchors {
                left: badge.right
                leftMargin: 10
                right: chevrons.left
                rightMargin: 10
                verticalCenter: parent.verticalCenter
            }
            spacing: 2
            Text {
                width: parent.width
                text: Workspaces.shownName
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.primary
                font {
                    pixelSize: 13
                    weight: Font.DemiBold
                }
            }
            Text {
                width: parent.width
                text: qsTr("Active Workspace")
                elide: Text.ElideRight
                color: Theme.secondary
                font.pixelSize: 10
            }
        }
        Symbol {
            id: chevrons
            anchors {
                right: parent.right
                rightMargin: 10
                verticalCenter: parent.verticalCenter
            }
            name: "chevron.up.chevron.down"
            size: 10
            weight: Font.Bold
            color: Theme.secondary
        }
        FocusRing {
            cornerRadius: 10
            visible: root.activeFocus
        }
        HoverHandler {
            id: hover
        }
        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: root.menuRequested()
        }
    }
}
