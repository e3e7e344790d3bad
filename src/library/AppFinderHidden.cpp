#include "foundation/Uuid.h"
#include "library/AppFinder.h"

#include <algorithm>

namespace quillbay {

namespace {

const QString hiddenAppsKey = QStringLiteral("quillbay_hidden_apps");
const QString hiddenFoldersKey = QStringLiteral("quillbay_hidden_folders");

/// Sorted, so that a set that has not changed is stored as it was.
QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

QStringList stored(const QSet<QString> &paths)
{
    return sorted(QStringList(paths.cbegin(), paths.cend()));
}

QStringList stored(const QSet<QUuid> &ids)
{
    QStringList texts;
    for (const QUuid &id : ids)
        texts.append(uuidString(id));
    return sorted(texts);
}

template <typename Element>
QSet<Element> changed(QSet<Element> set, const Element &element, bool isMember)
{
    if (isMember)
        set.insert(element);
    else
        set.remove(element);
    return set;
}

} // namespace

void AppFinder::loadHiddenApps()
{
    const QStringList paths = m_surroundings.preferences.stringArray(hiddenAppsKey).value_or(QStringList());
    publish(m_hiddenAppPaths, QSet<QString>(paths.cbegin(), paths.cend()), &AppFinder::hiddenAppPathsChanged);
}

void AppFinder::loadHiddenFolders()
{
    QSet<QUuid> ids;
    for (const QString &text :
         m_surroundings.preferences.stringArray(hiddenFoldersKey).value_or(QStringList())) {
        if (const std::optional<QUuid> id = uuidFromString(text))
            ids.insert(*id);
    }
    publish(m_hiddenFolderIDs, std::move(ids), &AppFinder::hiddenFolderIDsChanged);
}

void AppFinder::setAppHidden(const QString &path, bool hidden)
{
    publish(m_hiddenAppPaths, changed(m_hiddenAppPaths, path, hidden), &AppFinder::hiddenAppPathsChanged);
    m_surroundings.preferences.setStringArray(hiddenAppsKey, stored(m_hiddenAppPaths));
    sendResult();
}

void AppFinder::setFolderHidden(const QUuid &id, bool hidden)
{
    publish(m_hiddenFolderIDs, changed(m_hiddenFolderIDs, id, hidden), &AppFinder::hiddenFolderIDsChanged);
    m_surroundings.preferences.setStringArray(hiddenFoldersKey, stored(m_hiddenFolderIDs));
    sendResult();
}

void AppFinder::hideApp(const AppItem &app)
{
    setAppHidden(app.path, true);
}

void AppFinder::unhideApp(const AppItem &app)
{
    setAppHidden(app.path, false);
}

void AppFinder::hideFolder(const AppFolder &folder)
{
    setFolderHidden(folder.id, true);
}

void AppFinder::unhideFolder(const AppFolder &folder)
{
    setFolderHidden(folder.id, false);
}

QList<AppItem> AppFinder::getHiddenApps() const
{
    QList<AppItem> hidden;
    std::copy_if(apps().cbegin(), apps().cend(), std::back_inserter(hidden),
                 [this](const AppItem &app) { return m_hiddenAppPaths.contains(app.path); });
    return hidden;
}

} // namespace quillbay
