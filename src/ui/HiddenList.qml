pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What is hidden: folders as cards, applications as tiles. */
Item {
    id: root

    readonly property bool isEmpty: tiles.count === 0 && HiddenCards.count === 0

    /*! The user went up from the first row. */
    signal escapedUp

    TileGrid {
        id: tiles
        anchors.fill: parent
        inset: 24
        columns: AppColumns {
            width: tiles.width - 2 * tiles.inset
        }
        apps: ViewModel.filteredApps
        topPadding: 32 + heading.height
        onTopPaddingChanged: toTop()
        onEscapedUp: root.escapedUp()

        HiddenHeading {
            id: heading
            parent: tiles.contentItem
            x: -tiles.leftMargin
            y: -height
            width: root.width
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
