pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What is hidden: folders as cards, applications as tiles. */
TileGrid {
    id: root

    readonly property bool isEmpty: count === 0 && HiddenCards.count === 0

    hostWindow: Window.window
    inset: 24
    columns: AppColumns {
        width: root.width - 2 * root.inset
    }
    apps: ViewModel.filteredApps

    header: Column {
        width: root.width
        spacing: 32
        bottomPadding: 32

        Text {
            x: 56 - root.leftMargin
            topPadding: 16
            text: qsTr("Hidden Apps")
            color: Theme.primary
            Accessible.role: Accessible.Heading
            Accessible.name: text
            font {
                pixelSize: 20
                weight: Font.Bold
            }
        }
        HiddenFolders {
            visible: HiddenCards.count > 0
            x: 56 - root.leftMargin
            width: root.width - 112
        }
    }

    Column {
        anchors.centerIn: parent
        visible: root.isEmpty
        spacing: 16
        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "eye.slash"
            size: 64
            color: Theme.secondary
            opacity: 0.5
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("No Hidden Items")
            color: Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            font {
                pixelSize: 20
                weight: Font.DemiBold
            }
        }
    }
}
