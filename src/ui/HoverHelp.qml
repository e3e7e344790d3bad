pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! Help text for one control, made when the pointer first rests on it. */
Loader {
    id: root

    required property Item target
    required property string text
    required property bool hovered

    parent: target.Window.contentItem
    z: 100
    active: false
    source: "HelpText.qml"
    // What a press has changed is told the next time.
    onTextChanged: {
        const help = item as HelpText;
        if (help)
            help.target = null;
    }
    onHoveredChanged: {
        if (hovered)
            active = true;
        const help = item as HelpText;
        if (!help)
            return;
        help.parent = parent;
        help.text = text;
        help.target = hovered ? target : null;
    }
}
