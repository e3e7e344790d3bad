pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The hidden folders as cards. They open nothing; their menu brings a folder back. */
Column {
    id: root

    readonly property AdaptiveColumns columns: AdaptiveColumns {
        width: root.width
        minimum: 240
        gap: 24
    }

    spacing: 16

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Hidden Folders")

    Text {
        text: qsTr("Hidden Folders")
        color: Theme.primary
        Accessible.role: Accessible.Heading
        Accessible.name: text
        font {
            pixelSize: 20
            weight: Font.Bold
        }
    }
    Grid {
        columns: root.columns.count
        columnSpacing: root.columns.spacing
        rowSpacing: 24

        Repeater {
            model: HiddenCards
            delegate: FocusScope {
                id: cell

                required property string identifier
                required property string folderId
                required property string name
                required property AppListModel apps

                function popUp(x: real, y: real) {
                    menu.popUpFor(card, x, y);
                }

                width: root.columns.columnWidth
                height: 190
                activeFocusOnTab: true
                Keys.onMenuPressed: popUp(card.width / 2, card.height / 2)

                CategoryCardView {
                    id: card
                    identifier: cell.identifier
                    folderId: cell.folderId
                    name: cell.name
                    apps: cell.apps
                    focused: cell.activeFocus && !isEditingName
                    onContextMenuRequested: (x, y) => cell.popUp(x, y)
                    onNameEdited: cell.forceActiveFocus()
                }
            }
        }
    }
    CardMenuHost {
        id: menu
    }
}
