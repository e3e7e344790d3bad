#include "ReferenceLibrary.h"
#include "app/QuillbayViewModel.h"
#include "support/TestLibrary.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QRandomGenerator>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::ReferenceLibrary;
using quillbay::testing::TestLibrary;

namespace {

QStringList namesOf(const QList<AppItem> &apps)
{
    QStringList list;
    for (const AppItem &app : apps)
        list.append(app.name);
    return list;
}

/// The library and its reference, and a random user of both.
class Sequence
{
public:
    explicit Sequence(quint32 seed)
        : m_random(seed)
    {
        m_reference.active = m_library.workspaces->activeWorkspaceID();
        m_reference.now = m_library.now;
        start();
        install();
    }

    void step();
    void compare();
    QString last() const { return m_last; }

private:
    int any(qsizetype count) { return int(m_random.bounded(quint32(count))); }
    bool chance(int of) { return any(of) == 0; }
    AppItem anyApp() { return m_library.finder->apps()[any(m_library.finder->apps().size())]; }

    void start();
    void install();
    void restart();
    void leaveTheFilesOfAKill();
    void arrangeFolders();
    void changeFolder(const AppFolder &folder);
    void changeWorkspaces();
    void select();

    QRandomGenerator m_random;
    TestLibrary m_library;
    QTemporaryDir m_copies;
    std::unique_ptr<QuillbayViewModel> m_model;
    ReferenceLibrary m_reference;
    int m_made = 0;
    QString m_last;
};

void Sequence::start()
{
    QSignalSpy scanned(m_library.finder.get(), &AppFinder::scanFinished);
    m_model = std::make_unique<QuillbayViewModel>(*m_library.finder, *m_library.fakes.launcher,
                                                  *m_library.fakes.biometrics, m_library.preferences);
    for (QAbstractItemModel *model : {static_cast<QAbstractItemModel *>(m_model->filteredApps()),
                                      static_cast<QAbstractItemModel *>(m_model->unifiedGridItems())})
        new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::Fatal, model);
    ASSERT_TRUE(scanned.wait());
}

void Sequence::install()
{
    m_last = QStringLiteral("install");
    QStringList list;
    m_reference.installed.clear();
    for (char letter = 'a'; letter <= 'p'; ++letter) {
        if (chance(5))
            continue;
        const QString name = QString(QLatin1Char(letter)).repeated(2);
        const QString category = QStringLiteral("Kind%1").arg((letter / 3 + any(2)) % 4);
        list.append(name + QLatin1Char(':') + category);
        m_reference.installed.insert(name, category);
    }
    ASSERT_TRUE(m_library.install(list));
    m_reference.reload();
}

void Sequence::restart()
{
    m_model.reset();
    m_library.restart();
    start();
    m_reference.reload();
}

void Sequence::leaveTheFilesOfAKill()
{
    m_last = QStringLiteral("kill");
    const QString copy = m_copies.filePath(QString::number(++m_made));
    ASSERT_TRUE(QDir().mkpath(copy));
    for (const QString &file :
         QDir(m_library.home.path()).entryList({QStringLiteral("preferences*")}, QDir::Files))
        ASSERT_TRUE(QFile::copy(m_library.home.filePath(file), copy + QLatin1Char('/') + file));
    m_library.preferences = PreferenceStore(copy + QStringLiteral("/preferences.sqlite"));
    restart();
    // Goes on in the first place, with what the copy holds being the same.
    compare();
    m_library.preferences = PreferenceStore(m_library.home.filePath(QStringLiteral("preferences.sqlite")));
    restart();
}

void Sequence::changeFolder(const AppFolder &folder)
{
    AppFinder &finder = *m_library.finder;
    ReferenceLibrary::Folder &entry = *m_reference.folder(folder.id);
    const AppItem app = anyApp();
    switch (any(8)) {
    case 0:
        m_last = QStringLiteral("rename");
        entry.name = QStringLiteral("Renamed%1").arg(++m_made);
        finder.renameFolder(folder, entry.name);
        break;
    case 1:
        m_last = QStringLiteral("pin");
        finder.togglePinFolder(folder);
        entry.isPinned = !entry.isPinned;
        m_reference.save();
        m_reference.sort();
        return;
    case 2: {
        m_last = QStringLiteral("delete");
        m_model->deleteFolder(folder);
        m_reference.folders.removeIf([&](const auto &other) { return other.id == folder.id; });
        break;
    }
    case 3:
        m_last = QStringLiteral("remove app");
        m_model->removeAppFromFolder(app, folder);
        entry.apps.removeAll(app.name);
        break;
    case 4:
        if (entry.apps.size() > 1) {
            const int from = any(entry.apps.size());
            const int to = any(entry.apps.size() + 1);
            m_last = QStringLiteral("reorder apps %1 %2").arg(from).arg(to);
            finder.reorderAppsInFolder(folder, {from}, to);
            quillbay::testing::moveOne(entry.apps, from, to);
        }
        break;
    case 5:
        m_last = QStringLiteral("hide folder");
        if (m_reference.hiddenFolders.contains(folder.id))
            finder.unhideFolder(folder);
        else
            finder.hideFolder(folder);
        if (!m_reference.hiddenFolders.remove(folder.id))
            m_reference.hiddenFolders.insert(folder.id);
        return;
    default:
        m_last = QStringLiteral("add app");
        m_model->addAppToFolder(app, folder);
        if (!entry.apps.contains(app.name))
            entry.apps.append(app.name);
    }
    m_reference.save();
}

void Sequence::arrangeFolders()
{
    AppFinder &finder = *m_library.finder;
    const qsizetype roots = finder.getRootFolders().size();
    if (roots > 1 && chance(2)) {
        const int from = any(roots);
        const int to = any(roots + 1);
        m_last = QStringLiteral("reorder folders %1 %2").arg(from).arg(to);
        finder.reorderFolders({from}, to);
        m_reference.reorderFolders(from, to);
        return;
    }
    const QList<GridItemIdentifier> cells = m_model->unifiedGridItems()->items();
    QStringList texts;
    for (const GridItemIdentifier &cell : cells)
        texts.append(cell.stringRepresentation());
    const int from = any(cells.size());
    const int to = any(cells.size() + 1);
    m_last = QStringLiteral("reorder grid %1 %2").arg(from).arg(to);
    finder.reorderUnifiedItems({from}, to, cells);
    m_reference.reorderGrid(texts, from, to);
}

void Sequence::changeWorkspaces()
{
    WorkspaceManager &workspaces = *m_library.workspaces;
    const QList<Workspace> list = workspaces.workspaces();
    const Workspace chosen = list[any(list.size())];
    switch (any(4)) {
    case 0:
        m_last = QStringLiteral("new workspace");
        if (list.size() < 6)
            workspaces.createWorkspace(QStringLiteral("w%1").arg(++m_made), {}, {});
        break;
    case 1:
        m_last = QStringLiteral("delete workspace");
        workspaces.deleteWorkspace(chosen);
        if (list.size() > 1)
            m_reference.workspaces.remove(chosen.id);
        break;
    default:
        m_last = QStringLiteral("switch");
        workspaces.setActiveWorkspaceID(chosen.id);
    }
    // An inactive one that goes announces nothing.
    const bool announced =
        m_last != QLatin1String("delete workspace") || workspaces.activeWorkspaceID() != m_reference.active;
    m_reference.active = workspaces.activeWorkspaceID();
    if (announced)
        m_reference.reload();
}

void Sequence::select()
{
    using Case = SidebarSelection::Case;
    const Case cases[] = {Case::allApps, Case::recents, Case::favorites, Case::newlyAdded, Case::hidden};
    m_last = QStringLiteral("select");
    const QList<AppFolder> folders = m_library.finder->folders();
    const int choice = any(8);
    if (choice < 5)
        m_model->setSelection(SidebarSelection(cases[choice]));
    else if (choice == 5)
        m_model->setSelection(SidebarSelection::ofCategory(QStringLiteral("Kind1")));
    else if (choice == 6)
        m_model->setSelection(std::nullopt);
    else if (!folders.isEmpty())
        m_model->setSelection(SidebarSelection::ofFolder(folders[any(folders.size())]));
}

void Sequence::step()
{
    AppFinder &finder = *m_library.finder;
    const QList<AppFolder> folders = finder.folders();
    const int choice = any(100);
    m_library.now += any(1000);
    if (chance(200))
        m_library.now += 20 * 86400;
    m_reference.now = m_library.now;
    if (choice < 8) {
        const bool nested = !folders.isEmpty() && chance(3);
        const auto parent = nested ? std::optional(folders[any(folders.size())].id) : std::nullopt;
        const QString name = QStringLiteral("Folder%1").arg(++m_made);
        m_last = QStringLiteral("create ") + name;
        finder.createFolder(name, {}, {}, parent);
        m_reference.createFolder(m_library.folder(name).id, name, parent);
    } else if (choice < 40 && !folders.isEmpty()) {
        changeFolder(folders[any(folders.size())]);
    } else if (choice < 50) {
        arrangeFolders();
    } else if (choice < 60) {
        const AppItem app = anyApp();
        m_last = QStringLiteral("favourite ") + app.name;
        finder.toggleFavorite(app);
        if (m_reference.current().favourites.removeAll(app.name) == 0)
            m_reference.current().favourites.append(app.name);
    } else if (choice < 68) {
        const AppItem app = anyApp();
        m_last = QStringLiteral("launch ") + app.name;
        m_model->launchApp(app);
        m_reference.launch(app.name);
    } else if (choice < 75) {
        const AppItem app = anyApp();
        m_last = QStringLiteral("hide or unhide ") + app.name;
        if (m_reference.hiddenApps.remove(app.name)) {
            finder.unhideApp(app);
        } else {
            finder.hideApp(app);
            m_reference.hiddenApps.insert(app.name);
        }
    } else if (choice < 78) {
        m_last = QStringLiteral("sort");
        m_reference.sortOption = allAppSortOptions[size_t(any(4))];
        finder.setAllAppsSortOption(m_reference.sortOption);
        if (chance(2)) {
            finder.saveSortOption();
            m_reference.storedSortOption = m_reference.sortOption;
        }
    } else if (choice < 86) {
        changeWorkspaces();
    } else if (choice < 94) {
        select();
    } else if (choice < 97) {
        install();
    } else if (choice < 99) {
        m_last = QStringLiteral("restart");
        restart();
    } else {
        leaveTheFilesOfAKill();
    }
}

void Sequence::compare()
{
    using Case = SidebarSelection::Case;
    const AppFinder &finder = *m_library.finder;
    EXPECT_EQ(namesOf(finder.apps()), m_reference.apps());
    EXPECT_EQ(namesOf(finder.recentApps()), m_reference.recents());
    EXPECT_EQ(namesOf(finder.favoriteApps()), m_reference.shown(m_reference.current().favourites));
    EXPECT_EQ(namesOf(finder.newlyAddedApps()), m_reference.shown(m_reference.newlyAdded));

    QStringList folders;
    for (const AppFolder &folder : finder.folders())
        folders.append(folder.name + QLatin1Char(' ') +
                       namesOf(finder.getAppsInFolder(folder)).join(QLatin1Char(' ')));
    QStringList expected;
    for (const ReferenceLibrary::Folder &folder : std::as_const(m_reference.folders))
        expected.append(folder.name + QLatin1Char(' ') +
                        m_reference.shown(folder.apps).join(QLatin1Char(' ')));
    EXPECT_EQ(folders, expected);

    QStringList cells;
    for (const GridItemIdentifier &cell : m_model->unifiedGridItems()->items())
        cells.append(cell.stringRepresentation());
    const QStringList arranged = m_reference.arrangedGrid();
    EXPECT_EQ(cells.mid(0, arranged.size()), arranged);
    const QStringList rest = cells.mid(arranged.size());
    EXPECT_EQ(QSet<QString>(rest.cbegin(), rest.cend()), m_reference.unplacedCategories());
    EXPECT_EQ(rest.size(), m_reference.unplacedCategories().size());

    QStringList listed = m_reference.sorted();
    const std::optional<SidebarSelection> &selection = m_model->selection();
    const auto entry =
        selection && selection->folder() ? m_reference.folder(selection->folder()->id) : nullptr;
    switch (selection ? selection->which() : Case::allApps) {
    case Case::allApps:
        break;
    case Case::recents:
        listed = m_reference.visible(m_reference.recents());
        break;
    case Case::favorites:
        listed = m_reference.visible(m_reference.shown(m_reference.current().favourites));
        break;
    case Case::newlyAdded:
        listed = m_reference.visible(m_reference.shown(m_reference.newlyAdded));
        break;
    case Case::folder:
        listed = entry ? m_reference.visible(m_reference.shown(entry->apps)) : QStringList();
        break;
    case Case::category:
        listed = m_reference.visible(m_reference.apps());
        listed.removeIf([&](const QString &app) {
            return m_reference.installed.value(app) != selection->categoryName();
        });
        break;
    case Case::hidden:
        listed = m_reference.apps();
        listed.removeIf([&](const QString &app) { return !m_reference.hiddenApps.contains(app); });
        break;
    }
    EXPECT_EQ(namesOf(m_model->filteredApps()->items()), listed);
}

} // namespace

TEST(AnySequence, OfOperationsEndsAsTheRulesSay)
{
    for (const quint32 seed : {1u, 2u, 3u}) {
        Sequence sequence(seed);
        for (int i = 0; i < 1200; ++i) {
            sequence.step();
            sequence.compare();
            ASSERT_FALSE(::testing::Test::HasFailure())
                << "seed " << seed << ", step " << i << ": " << qUtf8Printable(sequence.last());
        }
    }
}
