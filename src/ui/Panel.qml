pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*!
    A rounded plate with an optional hairline, for what is there from the first picture on: one painted picture, where a
    Rectangle with round corners would be one more kind of thing for the graphics driver to prepare.
*/
PictureItem {
    id: root

    property real radius: 0
    property color color: "transparent"
    property color stroke: "transparent"

    picture: width > 0 && height > 0 ? Artwork.panel(width, height, radius, color, stroke, Screen.devicePixelRatio) : undefined
}
