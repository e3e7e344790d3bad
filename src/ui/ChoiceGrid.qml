pragma ComponentBehavior: Bound

import QtQuick

/*! Cells of which one is chosen, as with radio buttons. Tab comes to the chosen one, or the first where none is; arrows
    move from there, and what they come to is chosen by Space or Return. The delegate is a `ChoiceCell`. */
Grid {
    id: root

    property alias model: cells.model
    property alias delegate: cells.delegate
    /*! What the screen reader calls it. */
    property string title
    property int chosenIndex: -1
    /*! The cell that has the keyboard; -1 where none has. */
    property int current: -1
    readonly property int tabStop: current >= 0 ? current : Math.max(0, chosenIndex)
    readonly property Item currentCell: current >= 0 ? cells.itemAt(current) : null
    readonly property int line: flow === Grid.LeftToRight ? columns : rows

    function cellAt(index: int): Item {
        return cells.itemAt(index);
    }
    function step(distance: int) {
        const next = cells.itemAt(current + distance);
        if (next)
            next.forceActiveFocus(Qt.TabFocusReason);
    }

    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Keys.onLeftPressed: step(flow === Grid.LeftToRight ? -1 : -line)
    Keys.onRightPressed: step(flow === Grid.LeftToRight ? 1 : line)
    Keys.onUpPressed: step(flow === Grid.LeftToRight ? -line : -1)
    Keys.onDownPressed: step(flow === Grid.LeftToRight ? line : 1)

    Repeater {
        id: cells
    }
}
