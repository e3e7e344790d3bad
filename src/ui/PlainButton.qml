pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The other answers of a sheet, such as the way out. */
PushButton {
    fill: Theme.fade(Theme.primary, 0.06)
    stroke: Theme.fade(Theme.primary, 0.08)
    ink: Theme.primary
}
