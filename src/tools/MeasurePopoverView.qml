pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Opens and closes the ruler, and lists what was measured. */
Popover {
    id: root

    title: qsTr("Measure Ruler")
    padding: 16
    contentWidth: 240 - 2 * padding
    contentHeight: content.implicitHeight

    Column {
        id: content
        width: parent.width
        spacing: 12

        PopoverHeading {
            width: parent.width
            title: root.title
        }
        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "ruler.fill"
            size: 36
            color: Theme.fade(Theme.primary, 0.8)
        }
        Text {
            width: parent.width
            text: qsTr("Enables a floating, transparent overlay grid to measure dimensions.")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.secondary
            font.pixelSize: 11
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        SymbolPushButton {
            width: parent.width
            focus: true
            symbol: RulerManager.isRulerShowing ? "stop.fill" : "ruler.fill"
            text: RulerManager.isRulerShowing ? qsTr("Close Ruler") : qsTr("Open Screen Ruler")
            onClicked: {
                if (RulerManager.isRulerShowing)
                    RulerManager.closeRuler();
                else
                    RulerManager.showRuler();
            }
        }
        Column {
            width: parent.width
            visible: WorkspaceStorage.recentMeasurements.length > 0
            spacing: 6

            RecentHeading {
                width: parent.width
                title: qsTr("Recent Measurements")
                clearLabel: qsTr("Clear Recent Measurements")
                onCleared: RulerManager.clearMeasurements()
            }
            ListView {
                id: list
                width: parent.width
                height: 120
                model: WorkspaceStorage.recentMeasurements
                spacing: 6
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                keyNavigationEnabled: true
                highlightMoveDuration: 0

                Accessible.role: Accessible.List
                Accessible.name: qsTr("Recent Measurements")

                delegate: MeasurementRow {
                    required property string modelData

                    width: ListView.view.width
                    focus: ListView.isCurrentItem
                    activeFocusOnTab: ListView.isCurrentItem
                    text: modelData
                    onClicked: RulerManager.restore(modelData)
                }

                WheelScroll {
                    view: list
                    notch: 34
                }
                ThinScrollBar {
                    view: list
                }
            }
        }
    }
}
