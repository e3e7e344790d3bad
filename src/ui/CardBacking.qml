pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What a card stands on: all cards of a look show one picture. */
Item {
    id: root

    property bool dashed: false
    readonly property int reach: Artwork.cardReach(Theme.dark)
    readonly property int drop: Artwork.cardDrop(Theme.dark)

    PictureItem {
        anchors {
            fill: parent
            margins: -root.reach
            topMargin: root.drop - root.reach
            bottomMargin: -root.drop - root.reach
        }
        picture: Artwork.card(Theme.dark, Theme.windowBackground, root.dashed, Screen.devicePixelRatio)
    }
}
