pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! One row of the sidebar: a symbol and a text, on a plate while it is selected, under the pointer or under a drag. */
Item {
    id: root

    required property string label
    required property string symbol
    property color ink: Theme.blue
    property color text: Theme.primary
    property real indent: 0
    /*! Kept free at the end. */
    property real trailing: 0
    property bool selected: false
    /*! Selected, and the list has the keyboard. */
    property bool focused: false
    /*! Something that can be dropped here is over it. */
    property bool targeted: false

    /*! Its menu is open. */
    property bool marked: false

    readonly property real margin: 10
    readonly property color plate: targeted ? Theme.blue : focused ? Theme.fade(Theme.blue, Theme.dark ? 0.32 : 0.2) : selected ? Theme.fade(Theme.primary, Theme.dark ? 0.12 : 0.09) : Theme.fade(Theme.primary, hover.hovered || marked ? 0.05 : 0)

    signal picked
    signal menuRequested(real x, real y)

    function requestMenu() {
        menuRequested(width / 2, height / 2);
    }

    implicitHeight: 32

    Accessible.role: Accessible.ListItem
    Accessible.name: label
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.onPressAction: picked()

    Panel {
        // A plate that nobody sees is not painted, either.
        x: root.margin
        width: root.plate.a > 0 ? root.width - 2 * root.margin : 0
        height: root.height
        radius: 8
        color: root.plate
    }
    Symbol {
        id: mark
        x: 2 * root.margin + root.indent
        width: 18
        height: root.height
        name: root.symbol
        size: 16
        color: root.targeted ? "white" : root.ink
    }
    TextPicture {
        x: mark.x + mark.width + 8
        y: Math.round((root.height - height) / 2)
        width: Math.max(0, root.width - x - 2 * root.margin - root.trailing)
        height: lineHeight
        text: root.label
        color: root.targeted ? "white" : root.text
        pixelSize: Theme.bodySize
    }

    HoverHandler {
        id: hover
    }
    TapHandler {
        onTapped: root.picked()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => root.menuRequested(eventPoint.position.x, eventPoint.position.y)
    }
    // Not for the mouse, which holds a row still before it drags it.
    TapHandler {
        acceptedDevices: PointerDevice.TouchScreen | PointerDevice.Stylus
        onLongPressed: root.menuRequested(point.position.x, point.position.y)
    }
}
