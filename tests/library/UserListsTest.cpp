#include "support/TestLibrary.h"

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::names;
using quillbay::testing::TestLibrary;

namespace {

const QString sortKey = QStringLiteral("AllAppsSortOption");

QString url(const QString &name)
{
    return QLatin1String("file:///apps/") + name;
}

class UserLists : public ::testing::Test
{
protected:
    UserLists() { EXPECT_TRUE(library.install(QStringLiteral("a b c d e f g h i").split(QLatin1Char(' ')))); }

    QString recentsKey() const { return library.workspaces->key(QStringLiteral("recentApps")); }
    QString favoritesKey() const { return library.workspaces->key(QStringLiteral("favoriteApps")); }
    QString recents() const { return names(library.finder->recentApps()); }
    QString favorites() const { return names(library.finder->favoriteApps()); }
    void launch(const char *each)
    {
        for (; *each; ++each)
            library.finder->addToRecents(library.app(QChar::fromLatin1(*each)));
    }
    void toggle(const char *each)
    {
        for (; *each; ++each)
            library.finder->toggleFavorite(library.app(QChar::fromLatin1(*each)));
    }
    void restart()
    {
        library.restart();
        EXPECT_TRUE(library.scan());
    }

    TestLibrary library;
};

} // namespace

TEST_F(UserLists, RecentsAreTheLastSevenNewestFirst)
{
    launch("abca");
    EXPECT_EQ(recents(), QStringLiteral("a c b"));
    launch("defgh");
    EXPECT_EQ(recents(), QStringLiteral("h g f e d a c"));
    EXPECT_EQ(library.preferences.stringArray(recentsKey())->size(), AppFinder::mostRecents);
    library.finder->addToRecents(library.finder->recentApps().last());
    EXPECT_EQ(recents(), QStringLiteral("c h g f e d a"));
    restart();
    EXPECT_EQ(recents(), QStringLiteral("c h g f e d a"));
}

TEST_F(UserLists, FavoritesStandInTheOrderInWhichTheyWereAdded)
{
    toggle("cab");
    EXPECT_EQ(favorites(), QStringLiteral("c a b"));
    toggle("a");
    EXPECT_EQ(favorites(), QStringLiteral("c b"));
    EXPECT_FALSE(library.finder->isFavorite(library.app(QStringLiteral("a"))));
    toggle("a");
    EXPECT_EQ(favorites(), QStringLiteral("c b a"));
    restart();
    EXPECT_EQ(favorites(), QStringLiteral("c b a"));
    EXPECT_TRUE(library.finder->isFavorite(library.app(QStringLiteral("a"))));
}

TEST_F(UserLists, WhatIsGoneIsKeptAndComesBack)
{
    const AppItem gone = library.app(QStringLiteral("b"));
    launch("ab");
    toggle("ab");
    ASSERT_TRUE(library.install({QStringLiteral("a")}));
    EXPECT_EQ(recents(), QStringLiteral("a"));
    EXPECT_EQ(favorites(), QStringLiteral("a"));
    EXPECT_TRUE(library.finder->isFavorite(gone));
    ASSERT_TRUE(library.install({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(recents(), QStringLiteral("b a"));
    EXPECT_EQ(favorites(), QStringLiteral("a b"));
    ASSERT_TRUE(library.install({QStringLiteral("a")}));
    library.finder->toggleFavorite(gone);
    EXPECT_EQ(library.preferences.stringArray(favoritesKey()), QStringList(url(QStringLiteral("a"))));
}

TEST_F(UserLists, DamagedEntriesAreSkippedAndOtherTypesAreEmpty)
{
    const QStringList stored{QString(),
                             QStringLiteral("a"),
                             QStringLiteral("/apps/a"),
                             QStringLiteral("http://apps/a"),
                             QStringLiteral("file:///apps/%"),
                             url(QStringLiteral("b")),
                             QStringLiteral("file:///apps/%63")};
    library.preferences.setStringArray(recentsKey(), stored);
    library.preferences.setStringArray(favoritesKey(), stored);
    restart();
    EXPECT_EQ(recents(), QStringLiteral("b c"));
    EXPECT_EQ(favorites(), QStringLiteral("b c"));
    toggle("b");
    EXPECT_EQ(library.preferences.stringArray(favoritesKey())->size(), stored.size() - 1);

    library.preferences.setString(recentsKey(), url(QStringLiteral("a")));
    library.preferences.setDictionary(favoritesKey(), {});
    restart();
    EXPECT_EQ(recents() + favorites(), QString());
    launch("c");
    toggle("d");
    EXPECT_EQ(recents() + favorites(), QStringLiteral("cd"));
}

TEST_F(UserLists, AnotherWorkspaceHasItsOwnAndTheSameSortOption)
{
    launch("a");
    toggle("b");
    library.finder->setAllAppsSortOption(AppSortOption::category);
    library.finder->saveSortOption();
    const QUuid first = library.workspaces->activeWorkspaceID();
    library.workspaces->createWorkspace(QStringLiteral("W"), {}, {});
    EXPECT_EQ(recents() + favorites(), QString());
    EXPECT_FALSE(library.finder->isFavorite(library.app(QStringLiteral("b"))));
    EXPECT_EQ(library.finder->allAppsSortOption(), AppSortOption::category);
    launch("c");
    toggle("d");
    library.workspaces->setActiveWorkspaceID(first);
    EXPECT_EQ(recents() + favorites(), QStringLiteral("ab"));
}

TEST_F(UserLists, TheSortOptionIsKeptWhenItIsSaved)
{
    EXPECT_EQ(library.finder->allAppsSortOption(), AppSortOption::nameAscending);
    library.finder->setAllAppsSortOption(AppSortOption::nameDescending);
    restart();
    EXPECT_EQ(library.finder->allAppsSortOption(), AppSortOption::nameAscending) << "not saved";
    library.finder->setAllAppsSortOption(AppSortOption::recentlyUsed);
    library.finder->saveSortOption();
    EXPECT_EQ(library.preferences.string(sortKey), QStringLiteral("Recently Used"));
    launch("eb");
    restart();
    EXPECT_EQ(names(library.finder->getSortedApps(library.finder->apps())),
              QStringLiteral("b e a c d f g h i"));
    for (const char *text : {"recently used", "", "Date"}) {
        library.preferences.setString(sortKey, QString::fromUtf8(text));
        library.finder->loadSortOption();
        EXPECT_EQ(library.finder->allAppsSortOption(), AppSortOption::recentlyUsed) << "stays as it was";
    }
}

/// Who recomputes at each announcement, and only then, ends with what is there after the operation.
TEST_F(UserLists, TheLastAnnouncementOfEachOperationShowsItsResult)
{
    AppFinder &finder = *library.finder;
    const auto state = [&] {
        return recents() + QLatin1Char('|') + favorites() + QLatin1Char('|') +
               names(finder.getSortedApps(finder.apps())) + QLatin1Char('|') + names(finder.getHiddenApps()) +
               QString::number(finder.hiddenFolderIDs().size());
    };
    QString seen;
    QString seenFirst;
    QObject::connect(&finder, &ObservableObject::objectWillChange, [&] {
        seen = state();
        if (seenFirst.isNull())
            seenFirst = seen;
    });
    const AppItem b = library.app(QStringLiteral("b"));
    AppFolder folder;
    folder.id = QUuid::createUuid();
    const std::function<void()> operations[] = {
        [&] { finder.addToRecents(b); },
        [&] { finder.toggleFavorite(b); },
        [&] { finder.hideApp(b); },
        [&] { finder.unhideApp(b); },
        [&] { finder.hideFolder(folder); },
        [&] { finder.unhideFolder(folder); },
        [&] { finder.toggleFavorite(b); },
        [&] { finder.setAllAppsSortOption(AppSortOption::nameDescending); },
        [&] { library.workspaces->createWorkspace({}, {}, {}); }};
    for (const auto &operation : operations) {
        const QString before = state();
        seenFirst = QString();
        operation();
        EXPECT_EQ(seenFirst, before) << "announced before the change";
        EXPECT_NE(state(), before);
        EXPECT_EQ(seen, state());
    }
}
