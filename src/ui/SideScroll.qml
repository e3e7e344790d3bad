pragma ComponentBehavior: Bound

import QtQuick

/*! Scrolls its content sideways, by a wheel of either direction too, and brings into view what has the keyboard. */
Flickable {
    id: root

    /*! Among the content; null for nothing. */
    property Item reveal: null

    function scrollTo(place: real) {
        contentX = Math.max(0, Math.min(contentWidth - width, place));
    }
    function show(item: Item) {
        const left = item.mapToItem(contentItem, 0, 0).x;
        if (left < contentX)
            scrollTo(left - 8);
        else if (left + item.width > contentX + width)
            scrollTo(left + item.width + 8 - width);
    }

    contentHeight: height
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.HorizontalFlick
    onRevealChanged: {
        if (reveal)
            show(reveal);
    }

    WheelHandler {
        target: null
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        orientation: Qt.Vertical
        onWheel: event => {
            const exact = event.pixelDelta.x !== 0 || event.pixelDelta.y !== 0;
            const delta = exact ? event.pixelDelta : event.angleDelta;
            root.scrollTo(root.contentX - (Math.abs(delta.x) > Math.abs(delta.y) ? delta.x : delta.y));
        }
    }
}
