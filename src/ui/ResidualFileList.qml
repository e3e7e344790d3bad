// Not bound: this version of Qt makes no section heading of a bound component.
pragma ComponentBehavior: Unbound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! All that was found, by category. Arrows move, Space toggles. */
ListView {
    id: root

    required property UninstallerFlow flow

    model: flow.rows
    clip: true
    reuseItems: true
    bottomMargin: 8
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: count > 0
    keyNavigationEnabled: true
    currentIndex: -1
    highlightMoveDuration: 0

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Found items")
    Accessible.focusable: true

    onActiveFocusChanged: {
        if (activeFocus && currentIndex < 0 && count > 0)
            currentIndex = 0;
    }
    Keys.onSpacePressed: {
        const row = currentItem as ResidualFileRow;
        if (row)
            row.toggle();
    }

    // qmllint disable unqualified
    section {
        property: "category"
        labelPositioning: ViewSection.InlineLabels | ViewSection.CurrentLabelAtStart
        // A heading serves one category after the other. It hears of the next by its context alone, which nothing that has
        // required properties is given.
        delegate: Item {
            id: heading

            readonly property string category: section

            width: root.width
            height: header.implicitHeight

            CategorySectionHeader {
                id: header
                width: parent.width
                flow: root.flow
                section: heading.category
            }
        }
    }
    delegate: ResidualFileRow {
        width: root.width
        focused: ListView.isCurrentItem && root.activeFocus
        onToggled: root.flow.toggle(rowId)
    }
    // qmllint enable unqualified

    add: Transition {
        id: coming
        EaseOut {
            property: "opacity"
            from: 0
            to: 1
            duration: 200 * Theme.motion
        }
        EaseOut {
            property: "y"
            from: coming.ViewTransition.destination.y - coming.ViewTransition.item.height
            duration: 200 * Theme.motion
        }
    }
    remove: Transition {
        id: going
        EaseOut {
            property: "opacity"
            to: 0
            duration: 200 * Theme.motion
        }
        EaseOut {
            property: "y"
            to: going.ViewTransition.item.y - going.ViewTransition.item.height
            duration: 200 * Theme.motion
        }
    }
    removeDisplaced: Transition {
        EaseOut {
            property: "y"
            duration: 200 * Theme.motion
        }
    }

    WheelScroll {
        view: root
    }
    ThinScrollBar {
        view: root
    }
}
