pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! All applications by category: the cards, each of which opens its panel. */
UnifiedGrid {
    hostWindow: Window.window
    onExpandFolder: id => ExpandedCard.expandFolder(id)
    onExpandCategory: name => ExpandedCard.expandCategory(name)
}
