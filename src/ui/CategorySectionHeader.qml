pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Stands over the rows of a category, and stays at the top while they scroll by. */
Rectangle {
    id: root

    required property UninstallerFlow flow
    /*! The category's name. */
    required property string section

    /*! Of all its rows, selected or not. */
    readonly property var summary: flow.revision >= 0 ? flow.category(section) : null

    implicitHeight: toggle.implicitHeight + 16
    // What is below is drawn by the window itself, where nothing can blur it.
    color: {
        const material = Theme.material("ultraThin", Theme.dark, false);
        const ground = Theme.mix(Theme.material("sidebar", Theme.dark, false), "white", Theme.dark ? 0.08 : 0);
        return Theme.fade(Theme.mix(ground, Qt.rgba(material.r, material.g, material.b, 1), material.a), 0.97);
    }

    Accessible.role: Accessible.Heading
    Accessible.name: qsTr("%1 %2, %3").arg(section).arg(summary.countText).arg(summary.sizeText)

    // What is scrolled by below it is not to be clicked through it.
    MouseArea {
        anchors.fill: parent
    }
    Symbol {
        id: glyph
        anchors {
            left: parent.left
            leftMargin: 20
            verticalCenter: parent.verticalCenter
        }
        width: 20
        name: root.summary.icon
        size: 12
        weight: Font.DemiBold
        color: root.summary.accentColor
    }
    Text {
        id: title
        anchors {
            left: glyph.right
            leftMargin: 10
            verticalCenter: parent.verticalCenter
        }
        text: root.section
        textFormat: Text.PlainText
        color: Theme.fade(Theme.primary, 0.8)
        font {
            pixelSize: 12
            bold: true
        }
    }
    Text {
        anchors {
            left: title.right
            leftMargin: 10
            verticalCenter: parent.verticalCenter
        }
        text: root.summary.countText
        color: Theme.secondary
        font.pixelSize: 11
    }
    Text {
        anchors {
            right: toggle.left
            rightMargin: 10
            verticalCenter: parent.verticalCenter
        }
        text: root.summary.sizeText
        color: Theme.secondary
        font {
            pixelSize: 11
            weight: Font.DemiBold
        }
    }
    GhostButtonStyle {
        id: toggle
        anchors {
            right: parent.right
            rightMargin: 20
            verticalCenter: parent.verticalCenter
        }
        compact: true
        text: root.summary.isAllSelected ? qsTr("Deselect All") : qsTr("Select All")
        Accessible.description: root.section
        onClicked: {
            if (root.summary.isAllSelected)
                root.flow.deselectAllIn(root.section);
            else
                root.flow.selectAllIn(root.section);
        }
    }
}
