pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The icons of a card's applications, which scroll within the card. */
Flickable {
    id: root

    required property AppListModel apps
    /*! A mouse is over the card: what it drags is the card. */
    required property bool hovered

    readonly property bool overflows: contentHeight > height

    /*! False at the end of the way: then nothing was scrolled. */
    function scrollBy(distance: real, glides: bool): bool {
        const from = glide.running ? glide.to : contentY;
        const target = Math.max(0, Math.min(contentHeight - height, from + distance));
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

    function toTop() {
        glide.stop();
        contentY = 0;
    }

    width: 192
    contentHeight: icons.contentHeight
    interactive: overflows && !hovered
    boundsBehavior: Flickable.StopAtBounds

    CardIcons {
        id: icons
        y: root.contentY
        width: root.width
        height: root.height
        apps: root.apps
        offset: root.contentY
    }
    NumberAnimation {
        id: glide
        target: root
        property: "contentY"
        duration: 180
        easing.type: Easing.OutCubic
    }
}
