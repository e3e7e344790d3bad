pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Lock
import Quillbay.Ui

/*! Asks for a finger. */
BiometricPrompt {
    viewModel: ViewModel
}
