pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The icons of a card's applications in three columns. It makes only those that are to be seen. */
GridView {
    id: root

    required property AppListModel apps
    /*! A mouse is over the card: what it drags is the card. */
    required property bool hovered

    readonly property bool overflows: contentHeight > height - topMargin

    /*! False at the end of the way: then nothing was scrolled. */
    function scrollBy(distance: real, glides: bool): bool {
        const first = originY - topMargin;
        const last = Math.max(first, originY + contentHeight - height);
        const from = glide.running ? glide.to : contentY;
        const target = Math.max(first, Math.min(last, from + distance));
        if (target === from)
            return false;
        glide.stop();
        if (glides && !Theme.reducedMotion) {
            glide.to = target;
            glide.start();
        } else {
            contentY = target;
        }
        return true;
    }

    // Room around the icons for their shadows.
    width: 3 * cellWidth + 12
    topMargin: 4
    leftMargin: 12
    cellWidth: 60
    cellHeight: 60
    model: apps
    clip: overflows
    interactive: overflows && !hovered
    reuseItems: true
    cacheBuffer: 0
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false

    delegate: AppIconView {
        required path
        width: 48
        height: 48
        place: AppIconView.Card
    }

    NumberAnimation {
        id: glide
        target: root
        property: "contentY"
        duration: 180
        easing.type: Easing.OutCubic
    }
}
