pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

// A translucent backing, lit alike whether or not the window is the active one. `material` is "sidebar", "thin" or
// "ultraThin"; `blendingMode` is "behindWindow" or "withinWindow". Where the compositor cannot blur what is behind
// the window, and always within it, the backing is the plain colour that reads the same.
Rectangle {
    id: root

    property string material: "sidebar"
    property string blendingMode: "behindWindow"
    property alias blurring: blur.active

    color: Theme.material(root.material, Theme.dark, blur.visible && blur.active)

    BlurBehind {
        id: blur

        anchors.fill: parent
        visible: root.blendingMode === "behindWindow"
    }
}
