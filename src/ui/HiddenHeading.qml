pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Above the hidden applications: the title, and the hidden folders where there are any. */
Column {
    id: root

    readonly property int margin: 56

    spacing: 32
    bottomPadding: 32

    Text {
        x: root.margin
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
        x: root.margin
        width: root.width - 2 * root.margin
    }
}
