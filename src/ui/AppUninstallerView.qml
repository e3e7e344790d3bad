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

        required property string file
        property bool present: false
        property real response: 0.5
        property real shown: present ? 1 : 0

        function show() {
            setSource(file, {
                flow: root.flow
            });
        }

        anchors {
            left: parent.left
            right: parent.right
            top: divider.bottom
            bottom: parent.bottom
        }
        enabled: present
        opacity: Math.max(0, Math.min(1, shown))
        onPresentChanged: {
            if (present)
                show();
        }
        onShownChanged: {
            if (!present && shown <= 0)
                source = "";
        }
        Component.onCompleted: {
            if (present)
                show();
        }

        Behavior on shown {
            SpringMotion {
                response: stagePlace.response
                dampingFraction: 0.8
            }
        }
        Connections {
            target: stagePlace.item
            ignoreUnknownSignals: true
            function onDismissed() {
                root.dismissed();
            }
            function onPermanentRequested() {
                alerts.showPermanentDeleteAlert = true;
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
        file: "AccessGate.qml"
        present: root.stage === UninstallerFlow.CheckingAccess
    }
    StagePlace {
        file: "UninstallScanning.qml"
        present: root.stage === UninstallerFlow.Scanning
    }
    StagePlace {
        file: "UninstallReview.qml"
        // All its parts at once would hold the others' motion up.
        asynchronous: true
        present: root.stage === UninstallerFlow.Review
    }
    StagePlace {
        file: "UninstallDone.qml"
        present: root.stage === UninstallerFlow.Done
        response: 0.6
    }
    UninstallAlerts {
        id: alerts
        flow: root.flow
    }
}
