pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! All applications by category: the cards, each of which opens its panel. */
UnifiedGrid {
    onExpandFolder: id => ExpandedCard.expandFolder(id)
    onExpandCategory: name => ExpandedCard.expandCategory(name)
}
