#include "library/AppFinder.h"

namespace quillbay {

QList<GridItemIdentifier> AppFinder::getUnifiedGridOrder() const
{
    return {};
}
void AppFinder::reorderUnifiedItems(const QList<qsizetype> &, qsizetype, const QList<GridItemIdentifier> &) {}
void AppFinder::updateUnifiedGridOrderFromCurrentState() {}

} // namespace quillbay
