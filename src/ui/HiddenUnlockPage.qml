pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Lock
import Quillbay.Ui

/*! The hidden list while it is locked. */
UnlockHiddenView {
    focus: true
    viewModel: ViewModel
}
