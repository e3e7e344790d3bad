pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import QtQuick.Templates as T
import Quillbay.Vocabulary

/*! A menu in the looks of the program. Load it when it is first asked for: nothing of it belongs to the start. */
T.Menu {
    id: root

    margins: 8
    padding: 6
    overlap: 4
    implicitWidth: Math.min(320, Math.max(168, widest) + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding

    property real widest: 0

    function measure() {
        let width = 0;
        for (let i = 0; i < count; ++i)
            width = Math.max(width, itemAt(i).implicitWidth);
        widest = width;
    }

    onAboutToShow: {
        focusReturn.remember(parent);
        measure();
    }

    delegate: PanelMenuItem {}
    contentItem: ListView {
        implicitHeight: Math.min(contentHeight, (root.parent && root.parent.Window.height || 600) - 32)
        model: root.contentModel
        interactive: contentHeight > height
        clip: interactive
        currentIndex: root.currentIndex
        boundsBehavior: Flickable.StopAtBounds
    }
    readonly property FocusReturn focusReturn: FocusReturn {}
    onClosed: focusReturn.giveBack()

    background: Rectangle {
        radius: 10
        color: Theme.mix(Theme.windowBackground, "white", Theme.dark ? 0.06 : 0.8)
        border.color: Theme.fade(Theme.primary, 0.15)
    }
}
