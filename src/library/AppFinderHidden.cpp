#include "library/AppFinder.h"

namespace quillbay {

void AppFinder::loadHiddenApps() {}
void AppFinder::loadHiddenFolders() {}
void AppFinder::hideApp(const AppItem &) {}
void AppFinder::unhideApp(const AppItem &) {}
void AppFinder::hideFolder(const AppFolder &) {}
void AppFinder::unhideFolder(const AppFolder &) {}
QList<AppItem> AppFinder::getHiddenApps() const
{
    return {};
}

} // namespace quillbay
