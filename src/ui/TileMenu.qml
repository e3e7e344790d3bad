pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! The context menu of a tile. */
T.Menu {
    id: root

    property AppItemView tile: null

    margins: 8
    padding: 6
    implicitWidth: Math.max(180, contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex
    }
    background: Rectangle {
        radius: 10
        color: Theme.mix(Theme.windowBackground, "white", Theme.dark ? 0.06 : 0.8)
        border.color: Theme.fade(Theme.primary, 0.15)
    }

    TileMenuItem {
        text: qsTr("Launch")
        onTriggered: root.tile.launch()
    }
}
