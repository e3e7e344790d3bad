pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A card expanded: all its applications on a panel over the grid. Launching one closes it; in a folder they are put in
    order by dragging. The keyboard stays inside and goes back where it came from. */
FocusScope {
    id: root

    property bool isExpanded: true
    required property string title
    required property AppListModel apps
    /*! Empty for a category. */
    property string folderId

    /*! It has gone. */
    signal dismissed

    function appear() {
        exit.stop();
        opacity = 0;
        panel.scale = 0.98;
        tiles.currentIndex = -1;
        tiles.toTop();
        focusReturn.remember(root);
        tiles.forceActiveFocus(Qt.PopupFocusReason);
        entrance.start();
    }
    function dismissWithAnimation() {
        entrance.stop();
        exit.start();
    }
    function leave() {
        entrance.stop();
        exit.stop();
        if (activeFocus && focusReturn.origin && focusReturn.origin.visible)
            focusReturn.origin.forceActiveFocus(Qt.PopupFocusReason);
    }

    anchors.fill: parent
    visible: isExpanded
    opacity: 0

    Accessible.role: Accessible.Dialog
    Accessible.name: title

    Keys.onEscapePressed: dismissWithAnimation()

    Component.onCompleted: {
        if (isExpanded)
            appear();
    }
    onIsExpandedChanged: {
        if (isExpanded)
            appear();
        else
            leave();
    }

    FocusReturn {
        id: focusReturn
    }
    ParallelAnimation {
        id: entrance
        EaseOut {
            target: root
            property: "opacity"
            to: 1
            duration: 250 * Theme.motion
        }
        EaseOut {
            target: panel
            property: "scale"
            to: 1
            duration: 250 * Theme.motion
        }
    }
    SequentialAnimation {
        id: exit
        ParallelAnimation {
            EaseIn {
                target: root
                property: "opacity"
                to: 0
                duration: 200 * Theme.motion
            }
            EaseIn {
                target: panel
                property: "scale"
                to: 0.98
                duration: 200 * Theme.motion
            }
        }
        ScriptAction {
            script: {
                root.leave();
                root.dismissed();
            }
        }
    }

    // The darkening is in the shadow's picture as far as that reaches, and the panel hides what is below it: on a large
    // window half of the work of drawing it all.
    DimmedSurround {
        anchors.fill: parent
        hole: shadow.reach
        color: shadow.ground
    }
    FloatShadow {
        id: shadow
        x: panel.x
        y: panel.y
        width: panel.width
        height: panel.height
        hollow: true
        hiddenFrom: 0.98
        ground: Qt.rgba(0, 0, 0, 0.45)
        color: Qt.rgba(0, 0, 0, Theme.dark ? 0.4 : 0.15)
    }
    // Nothing reaches what is behind.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onClicked: mouse => {
            if (mouse.button === Qt.LeftButton)
                root.dismissWithAnimation();
        }
        onWheel: wheel => wheel.accepted = true
    }
    DropArea {
        anchors.fill: parent
        onDropped: drop => drop.accepted = false
    }

    Item {
        id: panel
        anchors.centerIn: parent
        width: Math.min(700, parent.width - 48)
        height: Math.min(500, parent.height - 48)
        scale: 0.98

        ModalBacking {
            anchors.fill: parent
        }
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
        }

        Column {
            id: header
            anchors {
                left: parent.left
                right: parent.right
            }
            topPadding: 32
            bottomPadding: 20
            spacing: 8
            Text {
                x: 68
                width: parent.width - 2 * x
                text: root.title
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignHCenter
                elide: Text.ElideRight
                color: Theme.primary
                Accessible.role: Accessible.Heading
                Accessible.name: text
                font {
                    pixelSize: 24
                    weight: Font.Bold
                }
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("%1 Apps").arg(root.apps ? root.apps.count : 0)
                color: Theme.secondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                font {
                    pixelSize: 13
                    weight: Font.Medium
                }
            }
        }
        ModalCloseButton {
            id: close
            anchors {
                right: parent.right
                top: parent.top
                margins: 24
            }
            KeyNavigation.tab: tiles
            KeyNavigation.backtab: tiles
            Keys.onDownPressed: tiles.forceActiveFocus()
            onClicked: root.dismissWithAnimation()
        }
        TileGrid {
            id: tiles
            anchors {
                left: parent.left
                right: parent.right
                top: header.bottom
                bottom: parent.bottom
            }
            focus: true
            apps: root.apps
            folder: root.folderId
            columns: AdaptiveColumns {
                width: tiles.width
                minimum: 110
                gap: 24
                padding: 40
            }
            rowSpacing: 28
            topPadding: 4
            bottomPadding: 40
            KeyNavigation.tab: close
            KeyNavigation.backtab: close
            onLaunched: root.dismissWithAnimation()
            onEscapedUp: close.forceActiveFocus()
        }
    }
}
