#include "library/AppFinder.h"
#include "support/TestLibrary.h"

#include <gtest/gtest.h>

using namespace quillbay;
using namespace quillbay::testing;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class FoldersTest : public ::testing::Test
{
protected:
    /// Creates folders one second after the other: each is newer than those before.
    void create(const std::initializer_list<const char *> list)
    {
        for (const char *name : list) {
            library.now += 1;
            finder().createFolder(text(name), text("folder"), text("#007AFF"));
        }
    }
    AppFinder &finder() { return *library.finder; }
    QString folders() { return names(finder().folders()); }
    QString roots() { return names(finder().getRootFolders()); }
    QString members(const char *folder)
    {
        return names(finder().getAppsInFolder(library.folder(text(folder))));
    }
    QString key() const { return library.workspaces->key(text("AppFolders")); }
    QString stored() const
    {
        const auto decoded = decodeFolders(library.preferences.data(key()).value_or(QByteArray()));
        const QList<AppFolder> *list = decodedValue(decoded);
        return list ? names(*list) : text("nothing");
    }
    void restart()
    {
        library.restart();
        ASSERT_TRUE(library.scan());
    }

    TestLibrary library;
};

} // namespace

TEST_F(FoldersTest, NewFoldersGoToTheEndButAreStoredInFront)
{
    create({"a", "b"});
    finder().createFolder(text("c"), text("star"), text("#FF0000"), library.folder(text("a")).id);
    EXPECT_EQ(folders(), text("a b c"));
    EXPECT_EQ(stored(), text("c a b"));
    const AppFolder c = library.folder(text("c"));
    EXPECT_EQ(c.sortOrder, 2);
    EXPECT_EQ(c.createdAt, library.now - 978307200);
    EXPECT_EQ(c.color, text("#FF0000"));

    restart();
    EXPECT_EQ(folders(), text("a b c"));
    EXPECT_EQ(library.folder(text("c")).id, c.id);
    EXPECT_EQ(roots(), text("a b"));
    EXPECT_EQ(names(finder().getChildFolders(library.folder(text("a")).id)), text("c"));
}

TEST_F(FoldersTest, SortsPinnedFirstThenByPlaceThenTheNewer)
{
    create({"a", "b", "c", "d"});
    QList<AppFolder> list = finder().folders();
    for (AppFolder &folder : list)
        folder.sortOrder = folder.name == text("d") ? std::numeric_limits<std::int64_t>::max() : 3;
    finder().setFolders(list);
    EXPECT_EQ(folders(), text("a b c d")) << "as given";
    finder().togglePinFolder(library.folder(text("d")));
    EXPECT_EQ(folders(), text("d c b a"));
    create({"e"}); // there is no place behind the last one
    EXPECT_EQ(folders(), text("d c b a e"));
    finder().togglePinFolder(library.folder(text("d")));
    EXPECT_EQ(folders(), text("c b a e d"));
}

TEST_F(FoldersTest, ChangesOneFolderByItsIdAndStoresIt)
{
    ASSERT_TRUE(library.install({text("Notes"), text("Mail"), text("Maps")}));
    create({"a", "b"});
    AppFolder stale = library.folder(text("b"));
    finder().renameFolder(stale, text("z"));
    finder().setFolderColor(stale, text("#00FF00"));
    finder().setFolderIcon(stale, text("star"));
    for (const char *app : {"Notes", "Mail", "Notes", "Maps"})
        finder().addAppToFolder(library.app(text(app)), stale);
    EXPECT_EQ(members("z"), text("Notes Mail Maps"));
    finder().reorderAppsInFolder(stale, {0}, 3);
    EXPECT_EQ(members("z"), text("Mail Maps Notes"));
    finder().removeAppFromFolder(library.app(text("Maps")), stale);
    EXPECT_EQ(folders(), text("a z"));

    const QByteArray before = *library.preferences.data(key());
    EXPECT_EQ(before, encodeFolders(finder().folders())) << "nothing of an older state is stored";

    // A folder that there is not changes nothing.
    stale.id = QUuid::createUuid();
    finder().renameFolder(stale, text("x"));
    finder().addAppToFolder(library.app(text("Maps")), stale);
    EXPECT_EQ(*library.preferences.data(key()), before);

    // An application that is away keeps its place.
    restart();
    ASSERT_TRUE(library.install({text("Notes")}));
    EXPECT_EQ(members("z"), text("Notes"));
    ASSERT_TRUE(library.install({text("Notes"), text("Mail")}));
    EXPECT_EQ(members("z"), text("Mail Notes"));
    const AppFolder z = library.folder(text("z"));
    EXPECT_EQ(z.color + z.icon, text("#00FF00star"));
}

TEST_F(FoldersTest, ReordersTheRootsAlone)
{
    create({"a", "b", "c"});
    finder().createFolder(text("child"), {}, {}, library.folder(text("a")).id);
    create({"hidden"});
    finder().hideFolder(library.folder(text("hidden")));
    finder().reorderFolders({0}, 2);
    EXPECT_EQ(roots(), text("b a c"));
    EXPECT_EQ(library.folder(text("child")).sortOrder, 3);
    EXPECT_EQ(library.folder(text("hidden")).sortOrder, 4);
    restart();
    EXPECT_EQ(folders().left(5), text("b a c"));
}

TEST_F(FoldersTest, EachWorkspaceHasItsOwn)
{
    create({"a", "b"});
    const Workspace first = library.workspaces->workspaces().first();
    library.workspaces->createWorkspace(text("Play"), {}, {});
    EXPECT_EQ(folders(), QString());
    create({"c"});
    library.workspaces->setActiveWorkspaceID(first.id);
    EXPECT_EQ(folders(), text("a b"));

    // What another process has stored meanwhile is what counts.
    library.preferences.setData(key(), encodeFolders({library.folder(text("b"))}));
    library.workspaces->setActiveWorkspaceID(first.id);
    EXPECT_EQ(folders(), text("b"));
    library.preferences.remove(key());
    library.workspaces->setActiveWorkspaceID(first.id);
    EXPECT_EQ(folders(), QString());
}

TEST_F(FoldersTest, WhatCannotBeReadShowsNothingAndStaysUntilTheNextFolder)
{
    create({"a"});
    const QByteArray damaged = library.preferences.data(key())->replace("\"color\"", "\"colour\"");
    const std::function<void()> damages[] = {
        [&] { library.preferences.setData(key(), damaged); },
        [&] { library.preferences.setData(key(), {}); },
        [&] { library.preferences.setString(key(), text("[]")); },
        [&] { library.preferences.setStringArray(key(), {text("a")}); },
    };
    for (const auto &damage : damages) {
        damage();
        const auto before = library.preferences.data(key());
        restart();
        EXPECT_EQ(folders(), QString());
        EXPECT_EQ(library.preferences.data(key()), before);
        create({"new"});
        EXPECT_EQ(stored(), text("new"));
    }
    // Half a character is stored as something else, and that is what a load gives.
    finder().renameFolder(library.folder(text("new")), QString(QChar(0xD800)));
    finder().loadFolders();
    EXPECT_EQ(folders(), text("?"));
}

TEST_F(FoldersTest, WhoRecomputesAtAnAnnouncementEndsUpRight)
{
    ASSERT_TRUE(library.install({text("Notes")}));
    QByteArray seen;
    QObject::connect(&finder(), &ObservableObject::objectWillChange,
                     [&] { seen = encodeFolders(finder().folders()); });
    const AppItem notes = library.app(text("Notes"));
    const auto a = [this] { return library.folder(text("a")); };
    const std::pair<const char *, std::function<void()>> operations[] = {
        {"create",
         [&] {
             create({"a", "b"});
         }},
        {"pin", [&] { finder().togglePinFolder(library.folder(text("b"))); }},
        {"colour", [&] { finder().setFolderColor(a(), text("x")); }},
        {"icon", [&] { finder().setFolderIcon(a(), text("x")); }},
        {"add", [&] { finder().addAppToFolder(notes, a()); }},
        {"reorder members", [&] { finder().reorderAppsInFolder(a(), {0}, 1); }},
        {"remove", [&] { finder().removeAppFromFolder(notes, a()); }},
        {"reorder", [&] { finder().reorderFolders({0}, 2); }},
        {"grid", [&] { finder().reorderUnifiedItems({0}, 1, {GridItemIdentifier::folder(a().id)}); }},
        {"rename", [&] { finder().renameFolder(a(), text("c")); }},
        {"set", [&] { finder().setFolders({library.folder(text("c"))}); }},
    };
    for (const auto &[name, operation] : operations) {
        seen.clear();
        operation();
        EXPECT_EQ(seen, encodeFolders(finder().folders())) << name;
    }
}
