pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! The answer that a sheet offers first. */
PushButton {
    fill: Theme.blue
    ink: "white"
}
