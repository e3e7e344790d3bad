pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What an alert speaks of, a line each; it scrolls where there is much. */
ListView {
    id: root

    implicitHeight: Math.min(contentHeight + topMargin + bottomMargin, 150)
    topMargin: 4
    bottomMargin: 4
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: contentHeight + topMargin + bottomMargin > height
    keyNavigationEnabled: true

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Affected items")
    Accessible.focusable: activeFocusOnTab

    delegate: Text {
        id: line

        required property int index
        required property string modelData

        width: root.width
        leftPadding: 10
        rightPadding: 10
        topPadding: 2
        bottomPadding: 2
        text: qsTr("• %1").arg(line.modelData)
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        color: Theme.primary
        font.pixelSize: 12
        Accessible.role: Accessible.ListItem
        Accessible.name: line.modelData
    }

    Rectangle {
        parent: root
        anchors.fill: parent
        z: -1
        radius: 8
        color: Theme.fade(Theme.primary, 0.05)
    }
    FocusRing {
        parent: root
        cornerRadius: 8
        anchors.margins: 0
    }
    WheelScroll {
        view: root
    }
    ThinScrollBar {
        view: root
    }
}
