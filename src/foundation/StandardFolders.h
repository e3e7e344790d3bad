#pragma once

#include <QString>

namespace quillbay {

/// Where the program keeps its files: "quillbay" below the folders of the XDG base directory specification.
/// The folders need not exist. A variable that is not an absolute path counts as unset, as that specification
/// demands. Thread: any.
QString stateFolder(); ///< $XDG_STATE_HOME/quillbay; default ~/.local/state/quillbay.

} // namespace quillbay
