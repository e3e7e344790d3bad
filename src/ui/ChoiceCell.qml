pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! One cell of a `ChoiceGrid`. Whoever shows it says when it is `selected`, and acts on `chosen`. */
Item {
    id: root

    required property int index
    required property ChoiceGrid grid
    property bool selected: grid.chosenIndex === index
    property string label
    property real cornerRadius: 0
    /*! 0 not selected, 1 selected, between them on the spring. */
    readonly property real look: Math.max(0, Math.min(1, motion))
    property real motion: selected ? 1 : 0

    signal chosen

    activeFocusOnTab: grid.tabStop === index
    onActiveFocusChanged: {
        if (activeFocus)
            grid.current = index;
        else if (grid.current === index)
            grid.current = -1;
    }

    Accessible.role: Accessible.RadioButton
    Accessible.name: label
    Accessible.focusable: true
    Accessible.checkable: true
    Accessible.checked: selected
    Accessible.onPressAction: chosen()
    Accessible.onToggleAction: chosen()
    Keys.onSpacePressed: chosen()
    Keys.onReturnPressed: chosen()
    Keys.onEnterPressed: chosen()

    Behavior on motion {
        SpringMotion {
            response: 0.25
            dampingFraction: 0.75
        }
    }
    MouseArea {
        anchors.fill: parent
        onClicked: root.chosen()
    }
    FocusRing {
        cornerRadius: root.cornerRadius
    }
}
