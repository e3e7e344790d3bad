pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A thin bar over the right edge of a view that scrolls down. It shows while the view scrolls, and with the pointer near
    it; then its thumb can be dragged, and a click beside the thumb turns a page. Put it inside the view. What is to be
    seen of it is made when it is first shown. */
Item {
    id: root

    required property Flickable view
    /*! How long it stays after the last movement, in milliseconds. */
    property int lingering: 800

    readonly property real first: view.originY - view.topMargin
    readonly property real last: Math.max(first, view.originY + view.contentHeight + view.bottomMargin - view.height)
    readonly property bool fits: last - first < 1
    readonly property bool wanted: !fits && (near.hovered || held || linger.running)
    property bool held: false

    /*! To a place between `first` and `last`. */
    function scrollTo(place: real) {
        view.contentY = Math.max(first, Math.min(last, place));
    }
    /*! One page: 1 down, -1 up. */
    function turnPage(direction: int) {
        glide.to = Math.max(first, Math.min(last, view.contentY + direction * view.height * 0.9));
        glide.restart();
    }

    parent: view
    z: 1
    anchors {
        right: parent.right
        top: parent.top
        bottom: parent.bottom
    }
    width: 14
    onWantedChanged: {
        if (wanted && !bar.item)
            bar.setSource("ScrollThumb.qml", {
                bar: root
            });
    }

    Connections {
        target: root.view
        function onContentYChanged() {
            // What moves while nobody sees it, or comes to its beginning, is being set up.
            if (root.view.visible && (linger.running || Math.abs(root.view.contentY - root.first) > 1))
                linger.restart();
        }
    }
    Timer {
        id: linger
        interval: root.lingering
    }
    NumberAnimation {
        id: glide
        target: root.view
        property: "contentY"
        duration: 150 * Theme.motion
        easing.type: Easing.OutCubic
    }
    HoverHandler {
        id: near
        enabled: !root.fits
    }
    Loader {
        id: bar
        anchors.fill: parent
    }
}
