pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Uninstalls the application that the view model names. Opens as it is made and, closed, takes the wish back. Load it
    while there is one. */
Sheet {
    id: root

    readonly property UninstallerFlow flow: Uninstalling.begin(root)

    title: qsTr("Uninstall App")
    padding: 0
    contentWidth: 680
    contentHeight: 560
    cornerRadius: 20
    onClosed: ViewModel.appToUninstall = ""
    Component.onCompleted: open()

    background: VisualEffectView {
        radius: root.cornerRadius
        blendingMode: "withinWindow"
    }

    AppUninstallerView {
        anchors.fill: parent
        focus: true
        flow: root.flow
        onDismissed: root.close()
    }
    // Over all that reaches the panel's edge.
    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: "transparent"
        border.color: Theme.fade(Theme.primary, 0.12)
    }
}
