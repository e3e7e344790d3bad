pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The active workspace's pieces of code: to find, to copy, and to add to. */
Popover {
    id: root

    readonly property CodeSnippets snippets: CodeSnippets {
        storage: WorkspaceStorage
    }
    /*! How far the form is open, from 0 to 1. */
    property real formOpened: snippets.showCreateForm ? 1 : 0
    readonly property bool showsForm: snippets.showCreateForm
    onShowsFormChanged: {
        if (showsForm)
            form.requestFocus();
        else
            search.requestFocus();
    }

    title: qsTr("Code Snippets")
    padding: 16
    contentWidth: 320 - 2 * padding
    contentHeight: aboveList + Math.max(100, Math.min(240, room - aboveList))

    readonly property real aboveList: header.height + 12 + formPlace.height + search.height + 12
    /*! Between its button and the window's lower edge; in a low window the list is lower, too. */
    readonly property real room: parent ? parent.Window.height - parent.mapToItem(null, 0, parent.height + 8).y - margins - 2 * padding : 0

    Behavior on formOpened {
        EaseInOut {
            duration: 350 * Theme.motion
        }
    }

    Item {
        id: header
        width: parent.width
        height: toggle.height

        Text {
            id: heading
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            textFormat: Text.PlainText
            color: Theme.primary
            font {
                pixelSize: 14
                bold: true
            }
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            anchors {
                left: heading.right
                leftMargin: 8
                baseline: heading.baseline
            }
            visible: text !== ""
            text: root.snippets.copyMessage
            textFormat: Text.PlainText
            color: Theme.green
            font {
                pixelSize: 11
                weight: Font.Medium
            }
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        SymbolButton {
            id: toggle
            anchors.right: parent.right
            symbol: root.snippets.showCreateForm ? "chevron.up.circle.fill" : "plus.circle.fill"
            label: root.snippets.showCreateForm ? qsTr("Close Form") : qsTr("New Snippet")
            size: 16
            ink: Theme.blue
            onClicked: root.snippets.showCreateForm = !root.snippets.showCreateForm
        }
    }
    Item {
        id: formPlace
        anchors.top: header.bottom
        anchors.topMargin: 12
        width: parent.width
        height: root.formOpened * (form.implicitHeight + 12)
        visible: root.formOpened > 0
        enabled: root.snippets.showCreateForm
        opacity: root.formOpened
        clip: root.formOpened < 1

        CodeSnippetForm {
            id: form
            width: parent.width
            height: implicitHeight
            snippets: root.snippets
        }
    }
    ToolField {
        id: search
        anchors.top: formPlace.bottom
        width: parent.width
        focus: true
        placeholder: qsTr("Search snippets...")
        text: root.snippets.snippetSearch
        onEdited: text => root.snippets.snippetSearch = text
        Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
    }
    ListView {
        id: list
        anchors {
            left: parent.left
            right: parent.right
            top: search.bottom
            topMargin: 12
            bottom: parent.bottom
        }
        model: root.snippets
        spacing: 8
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        onCountChanged: {
            if (currentIndex < 0 && count > 0)
                currentIndex = 0;
        }

        Accessible.role: Accessible.List
        Accessible.name: root.title

        delegate: CodeSnippetItemView {
            required property int index

            width: ListView.view.width
            height: implicitHeight
            isCurrent: ListView.isCurrentItem
            onCopyRequested: root.snippets.copy(index)
            onDeleteRequested: root.snippets.remove(index)
            onTapped: root.snippets.toggleExpanded(index)
        }

        WheelScroll {
            view: list
            notch: 60
        }
        ThinScrollBar {
            view: list
        }
    }
}
