pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The tools of the list that is shown, and the window's buttons. */
Row {
    id: root

    required property Window window
    property alias showingColorPicker: colorPicker.showing
    property alias showingMeasureRuler: measureRuler.showing
    property alias showingQRGenerator: qrGenerator.showing
    property alias showingStickyNotes: stickyNotes.showing
    property alias showingSnippets: snippets.showing

    function toggleMaximized() {
        windowButtons.toggleMaximized();
    }

    spacing: 16

    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        ToolbarTool {
            id: colorPicker
            symbol: "eyedropper"
            label: qsTr("Color Picker")
            popover: "ColorPickerPopoverView.qml"
        }
        ToolbarTool {
            id: measureRuler
            symbol: "ruler"
            label: qsTr("Screen Ruler")
            popover: "MeasurePopoverView.qml"
        }
        ToolbarTool {
            id: qrGenerator
            symbol: "qrcode"
            label: qsTr("QR Generator")
            popover: "QRGeneratorPopoverView.qml"
        }
        ToolbarTool {
            id: stickyNotes
            symbol: "note.text"
            label: qsTr("Sticky Notes")
            popover: "StickyNotesPopoverView.qml"
        }
        ToolbarTool {
            id: snippets
            symbol: "terminal"
            label: qsTr("Code Snippets")
            popover: "CodeSnippetsPopoverView.qml"
        }
    }
    ToolbarButton {
        id: sortButton
        visible: Library.isAllApps
        anchors.verticalCenter: parent.verticalCenter
        symbol: "arrow.up.arrow.down"
        label: qsTr("Sort")
        opensPopup: true
        open: sortMenu.open
        onClicked: sortMenu.popUpBelow(sortButton)

        MenuHost {
            id: sortMenu
            source: "SortMenu.qml"
        }
    }
    ToolbarButton {
        visible: Library.selectedFolder !== ""
        anchors.verticalCenter: parent.verticalCenter
        symbol: "plus.circle"
        label: qsTr("Add Apps")
        onClicked: Library.openPicker(Library.selectedFolder)
    }
    WindowButtons {
        id: windowButtons
        anchors.verticalCenter: parent.verticalCenter
        window: root.window
    }
}
