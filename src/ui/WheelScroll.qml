pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! Scrolls a view by the wheel: in a smooth glide for notches, directly for touch pads. With a mouse over it the view
    does not follow drags, which belong to what is dragged; a finger still moves it. */
Item {
    id: root

    required property Flickable view
    /*! How far a notch goes. */
    property real notch: 120

    anchors.fill: parent
    z: -1

    function scrollBy(distance: real, glides: bool) {
        const first = view.originY - view.topMargin;
        const last = Math.max(first, view.originY + view.contentHeight + view.bottomMargin - view.height);
        const from = glide.running ? glide.to : view.contentY;
        const target = Math.max(first, Math.min(last, from + distance));
        glide.stop();
        if (glides && !Theme.reducedMotion) {
            glide.to = target;
            glide.start();
        } else {
            view.contentY = target;
        }
    }

    HoverHandler {
        id: mouse
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
    }
    Binding {
        target: root.view
        property: "interactive"
        value: !mouse.hovered
    }
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        target: null
        onWheel: event => {
            if (event.pixelDelta.y !== 0)
                root.scrollBy(-event.pixelDelta.y, false);
            else
                root.scrollBy(-event.angleDelta.y / 120 * root.notch, true);
        }
    }
    NumberAnimation {
        id: glide
        target: root.view
        property: "contentY"
        duration: 180
        easing.type: Easing.OutCubic
    }
}
