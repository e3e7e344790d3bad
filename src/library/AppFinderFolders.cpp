#include "library/AppFinder.h"

namespace quillbay {

void AppFinder::setFolders(const QList<AppFolder> &) {}
void AppFinder::createFolder(const QString &, const QString &, const QString &, const std::optional<QUuid> &)
{
}
void AppFinder::renameFolder(const AppFolder &, const QString &) {}
void AppFinder::togglePinFolder(const AppFolder &) {}
void AppFinder::setFolderColor(const AppFolder &, const QString &) {}
void AppFinder::setFolderIcon(const AppFolder &, const QString &) {}
void AppFinder::addAppToFolder(const AppItem &, const AppFolder &) {}
void AppFinder::removeAppFromFolder(const AppItem &, const AppFolder &) {}
void AppFinder::reorderAppsInFolder(const AppFolder &, const QList<qsizetype> &, qsizetype) {}
void AppFinder::reorderFolders(const QList<qsizetype> &, qsizetype) {}
QList<AppFolder> AppFinder::getRootFolders() const
{
    return {};
}
QList<AppFolder> AppFinder::getChildFolders(const QUuid &) const
{
    return {};
}
QList<AppItem> AppFinder::getAppsInFolder(const AppFolder &) const
{
    return {};
}
void AppFinder::saveFolders() {}
void AppFinder::loadFolders() {}

} // namespace quillbay
