pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A few choices side by side of which one holds. */
Rectangle {
    id: root

    required property var options
    property int current: 0
    property string title

    signal chosen(int index)

    implicitHeight: 24
    radius: 7
    color: Theme.fade(Theme.primary, 0.06)

    Rectangle {
        x: 2 + root.current * segments.segmentWidth
        y: 2
        width: segments.segmentWidth
        height: root.height - 4
        radius: 5
        color: Theme.dark ? Qt.rgba(1, 1, 1, 0.22) : "white"
        border.color: Theme.fade(Theme.primary, 0.1)

        Behavior on x {
            SpringMotion {
                response: 0.25
                dampingFraction: 0.75
            }
        }
    }
    ChoiceGrid {
        id: segments

        readonly property real segmentWidth: (root.width - 4) / root.options.length

        x: 2
        y: 2
        title: root.title
        columns: root.options.length
        chosenIndex: root.current
        model: root.options
        delegate: ChoiceCell {
            id: segment

            required property string modelData

            grid: segments
            width: segments.segmentWidth
            height: root.height - 4
            cornerRadius: 5
            label: modelData
            onChosen: root.chosen(index)

            Text {
                anchors.centerIn: parent
                text: segment.modelData
                textFormat: Text.PlainText
                color: Theme.primary
                font.pixelSize: 12
                font.weight: segment.selected ? Font.Medium : Font.Normal
            }
        }
    }
}
