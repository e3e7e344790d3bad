#pragma once

namespace quillbay {

enum class DeletionMethod {
    Trash,    ///< To the Trash, never further.
    Permanent ///< For good.
};

} // namespace quillbay
