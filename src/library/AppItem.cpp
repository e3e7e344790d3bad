#include "library/AppItem.h"

namespace quillbay {

bool looksSame(const AppItem &a, const AppItem &b)
{
    return a.path == b.path && a.name == b.name && a.category == b.category;
}

} // namespace quillbay
