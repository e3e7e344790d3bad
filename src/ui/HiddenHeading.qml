pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Above the hidden applications: the title with the list's lock, and the hidden folders where there are any. */
Column {
    id: root

    readonly property int margin: 56

    spacing: 32
    bottomPadding: 32

    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Hidden Apps")

    Item {
        x: root.margin
        width: root.width - 2 * root.margin
        height: 16 + Math.max(title.height, buttons.height)

        Text {
            id: title
            y: 16 + (buttons.height - height) / 2
            width: buttons.x - 12
            text: qsTr("Hidden Apps")
            color: Theme.primary
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
            Accessible.name: text
            font {
                pixelSize: 20
                weight: Font.Bold
            }
        }
        Row {
            id: buttons
            x: parent.width - width
            y: 16
            spacing: 8

            BorderedButton {
                symbol: "lock.open.fill"
                text: qsTr("Disable Password Lock")
                ink: Theme.red
                onClicked: ViewModel.askAndDisableSecurity()
            }
            BorderedButton {
                symbol: "lock.fill"
                text: qsTr("Lock")
                onClicked: ViewModel.isHiddenUnlocked = false
            }
        }
    }
    HiddenFolders {
        visible: HiddenCards.count > 0
        x: root.margin
        width: root.width - 2 * root.margin
    }
}
