pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Lock
import Quillbay.Ui

/*! The hidden list before it has a password. */
SetupHiddenLockView {
    focus: true
    viewModel: ViewModel
}
