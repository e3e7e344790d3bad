#include "support/TestLibrary.h"

#include <QSignalSpy>

#include <algorithm>

#include <gtest/gtest.h>

namespace quillbay::testing {

namespace {

template <typename Item>
Item named(const QList<Item> &items, const QString &name)
{
    const auto found =
        std::find_if(items.cbegin(), items.cend(), [&name](const Item &item) { return item.name == name; });
    if (found != items.cend())
        return *found;
    ADD_FAILURE() << "there is no " << qUtf8Printable(name);
    return {};
}

template <typename Item>
QString joined(const QList<Item> &items)
{
    QStringList list;
    for (const Item &item : items)
        list.append(item.name);
    return list.join(QLatin1Char(' '));
}

} // namespace

TestLibrary::TestLibrary()
    : preferences(home.filePath(QStringLiteral("preferences.sqlite")))
{
    restart();
}

void TestLibrary::restart()
{
    finder.reset();
    workspaces = std::make_unique<WorkspaceManager>(preferences, notifications);
    finder = std::make_unique<AppFinder>(
        AppFinder::Surroundings{*fakes.applications, *fakes.folderWatch, *fakes.recentDocuments, *fakes.icons,
                                preferences, *workspaces, notifications, [this] { return now; }});
}

bool TestLibrary::scan()
{
    QSignalSpy finished(finder.get(), &AppFinder::scanFinished);
    finder->scanApps();
    return finished.wait();
}

bool TestLibrary::install(const QStringList &names)
{
    std::vector<platform::InstalledApplication> applications;
    for (const QString &text : names) {
        const QString name = text.section(QLatin1Char(':'), 0, 0);
        applications.push_back(FakeApplicationSource::application(QLatin1String("/apps/") + name, name,
                                                                  text.section(QLatin1Char(':'), 1)));
    }
    fakes.applications->setApplications(std::move(applications));
    return scan();
}

AppItem TestLibrary::app(const QString &name) const
{
    return named(finder->apps(), name);
}

AppFolder TestLibrary::folder(const QString &name) const
{
    return named(finder->folders(), name);
}

QString names(const QList<AppItem> &apps)
{
    return joined(apps);
}

QString names(const QList<AppFolder> &folders)
{
    return joined(folders);
}

} // namespace quillbay::testing
