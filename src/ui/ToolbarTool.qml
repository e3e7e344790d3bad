pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Quillbay.Ui

/*! A button of the header that opens a popover of its own. The popover is made when it is opened, and gone when it has
    closed. */
ToolbarButton {
    id: root

    /*! The file of the popover. */
    required property string popover
    property bool showing: false

    function show() {
        if (!host.item) {
            // A press on the button is the button's.
            host.setSource(popover, {
                parent: root,
                closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
            });
        }
        const panel = host.item as Popover;
        if (panel)
            panel.open();
        else
            showing = false;
    }
    function drop() {
        if (!showing)
            host.source = "";
    }

    opensPopup: true
    open: showing
    onClicked: showing = !showing
    onShowingChanged: {
        if (showing)
            show();
        else if (host.item)
            (host.item as Popover).close();
    }

    Loader {
        id: host
    }
    Connections {
        target: host.item
        ignoreUnknownSignals: true
        function onAboutToHide() {
            root.showing = false;
        }
        function onClosed() {
            Qt.callLater(root.drop); // qmllint disable type
        }
    }
}
