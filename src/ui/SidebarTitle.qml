pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! The title of a part of the sidebar. */
Text {
    leftPadding: 20
    topPadding: 4
    bottomPadding: 6
    textFormat: Text.PlainText
    color: Theme.secondary
    font {
        pixelSize: Theme.subheadlineSize
        weight: Font.DemiBold
    }
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
