pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Several lines of plain text on a plate. `value` is the text from outside; `edited` tells what the user made of it, and
    nothing else: a text that the editor cannot show as it is stays as it is until it is edited. Tab leaves it. */
FocusScope {
    id: root

    required property string value
    /*! What the screen reader calls it. */
    required property string label
    property alias font: edit.font
    property alias readOnly: edit.readOnly
    property color ink: Theme.primary
    property alias fill: plate.color
    property alias radius: plate.radius
    property real inset: 10
    /*! The text comes from outside; so does the first one, which is taken when the editor is complete. */
    property bool isTaking: true

    signal edited(string text)

    onValueChanged: {
        if (edit.text === value)
            return;
        const wasTaking = isTaking;
        isTaking = true;
        edit.text = value;
        isTaking = wasTaking;
        view.contentY = 0;
    }

    Rectangle {
        id: plate
        anchors.fill: parent
    }
    Flickable {
        id: view

        function show(place: rect) {
            if (place.y < contentY + root.inset)
                contentY = Math.max(0, place.y - root.inset);
            else if (place.y + place.height > contentY + height - root.inset)
                contentY = Math.min(contentHeight - height, place.y + place.height + root.inset - height);
        }

        anchors.fill: parent
        contentWidth: width
        contentHeight: edit.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        TextEdit {
            id: edit
            width: view.width
            height: Math.max(view.height, implicitHeight)
            padding: root.inset
            focus: true
            activeFocusOnTab: true
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            selectByMouse: true
            color: root.ink
            selectionColor: Theme.fade(root.ink, 0.2)
            selectedTextColor: root.ink
            font.pixelSize: Theme.bodySize
            cursorDelegate: TextCursor {
                editor: edit
                color: root.ink
            }

            Accessible.role: Accessible.EditableText
            Accessible.name: root.label
            Accessible.multiLine: true
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            onCursorRectangleChanged: view.show(cursorRectangle)
            onTextChanged: {
                if (!root.isTaking)
                    root.edited(text);
            }
            Component.onCompleted: root.isTaking = false
        }
        WheelScroll {
            view: view
            notch: 40
        }
        ThinScrollBar {
            view: view
        }
    }
    FocusRing {
        cornerRadius: plate.radius
        visible: edit.activeFocus
    }
}
