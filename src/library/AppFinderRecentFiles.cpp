#include "library/AppFinder.h"

namespace quillbay {

void AppFinder::fetchRecentFiles() {}
void AppFinder::processRecentFiles(const QList<platform::RecentDocument> &) {}

} // namespace quillbay
