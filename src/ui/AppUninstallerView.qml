pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Uninstalls one application: what is uninstalled, and below it the stage that it has come to. */
FocusScope {
    id: root

    required property UninstallerFlow flow

    readonly property int stage: flow.stage

    signal dismissed

    // What had the keyboard goes with its stage.
    onStageChanged: place.forceActiveFocus()

    component StagePlace: Loader {
        id: stagePlace

        property bool present: false
        property real response: 0.5
        property real shown: present ? 1 : 0

        anchors {
            left: parent.left
            right: parent.right
            top: divider.bottom
            bottom: parent.bottom
        }
        active: present || shown > 0
        enabled: present
        opacity: Math.max(0, Math.min(1, shown))

        Behavior on shown {
            SpringMotion {
                response: stagePlace.response
                dampingFraction: 0.8
            }
        }
    }

    // Where the keyboard is until it is used, or has nowhere else to be.
    Item {
        id: place
        focus: true
        Accessible.role: Accessible.Pane
        Accessible.name: header.title
        Accessible.focusable: true
    }
    UninstallHeader {
        id: header
        width: parent.width
        flow: root.flow
        onDismissed: root.dismissed()
    }
    Rectangle {
        id: divider
        anchors.top: header.bottom
        width: parent.width
        height: 1
        color: Theme.fade(Theme.primary, 0.3 * 0.5)
    }

    StagePlace {
        present: root.stage === UninstallerFlow.CheckingAccess
        sourceComponent: AccessGate {
            flow: root.flow
            onDismissed: root.dismissed()
        }
    }
    StagePlace {
        present: root.stage === UninstallerFlow.Scanning
        sourceComponent: UninstallScanning {
            flow: root.flow
        }
    }
    StagePlace {
        present: root.stage === UninstallerFlow.Review
        sourceComponent: UninstallReview {
            flow: root.flow
            onDismissed: root.dismissed()
            onPermanentRequested: alerts.showPermanentDeleteAlert = true
        }
    }
    StagePlace {
        present: root.stage === UninstallerFlow.Done
        response: 0.6
        sourceComponent: UninstallDone {
            flow: root.flow
            onDismissed: root.dismissed()
        }
    }
    UninstallAlerts {
        id: alerts
        flow: root.flow
    }
}
