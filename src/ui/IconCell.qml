pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A symbol to choose. */
ChoiceCell {
    id: root

    required property string symbol
    /*! The colour of the symbol and its plate when selected. */
    required property color tint
    property real edge: 34
    property real symbolSize: 16
    /*! How strong the symbol is when it is not selected. */
    property real restOpacity: 0.6

    implicitWidth: edge
    implicitHeight: edge
    cornerRadius: 10
    label: IconChoices.label(symbol)

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: Theme.mix(Theme.fade(Theme.primary, 0.04), Theme.fade(root.tint, 0.15), root.look)
        border.width: root.look > 0 ? 1.5 : 0
        border.color: Theme.fade(root.tint, root.look)
    }
    Symbol {
        anchors.centerIn: parent
        name: root.symbol
        size: root.symbolSize
        color: Theme.mix(Theme.fade(Theme.primary, root.restOpacity), root.tint, root.look)
    }
}
