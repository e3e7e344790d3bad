#include "foundation/Uuid.h"
#include "support/TestLibrary.h"

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::names;
using quillbay::testing::TestLibrary;

namespace {

const QString appsKey = QStringLiteral("quillbay_hidden_apps");
const QString foldersKey = QStringLiteral("quillbay_hidden_folders");

struct HiddenApps : ::testing::Test
{
    HiddenApps()
    {
        EXPECT_TRUE(library.install({QStringLiteral("a"), QStringLiteral("b x"), QStringLiteral("c")}));
    }
    TestLibrary library;
};

} // namespace

TEST_F(HiddenApps, ApplicationsAreKeptByPathInEveryWorkspace)
{
    const AppItem b = library.app(QStringLiteral("b x"));
    library.finder->hideApp(library.app(QStringLiteral("c")));
    library.finder->hideApp(b);
    library.finder->hideApp(b);
    EXPECT_EQ(names(library.finder->getHiddenApps()), QStringLiteral("b x c")) << "in the order of apps";
    EXPECT_EQ(library.preferences.stringArray(appsKey),
              QStringList({QStringLiteral("/apps/b x"), QStringLiteral("/apps/c")}));
    library.workspaces->createWorkspace({}, {}, {});
    EXPECT_EQ(names(library.finder->getHiddenApps()), QStringLiteral("b x c"));

    ASSERT_TRUE(library.install({QStringLiteral("a"), QStringLiteral("c")}));
    EXPECT_EQ(names(library.finder->getHiddenApps()), QStringLiteral("c"));
    library.restart();
    EXPECT_EQ(library.finder->hiddenAppPaths().size(), 2) << "known before the first scan";
    ASSERT_TRUE(library.install({QStringLiteral("a"), QStringLiteral("b x"), QStringLiteral("c")}));
    EXPECT_EQ(names(library.finder->getHiddenApps()), QStringLiteral("b x c"));
    library.finder->unhideApp(b);
    library.preferences.remove(appsKey);
    library.finder->unhideApp(b);
    EXPECT_EQ(library.preferences.stringArray(appsKey), QStringList(QStringLiteral("/apps/c")))
        << "what is in memory is stored again";
}

TEST_F(HiddenApps, FoldersAreKeptByIdentifierAndDamagedOnesGoWithTheNextChange)
{
    AppFolder one;
    one.id = QUuid::createUuid();
    AppFolder two;
    two.id = QUuid::createUuid();
    library.preferences.setStringArray(foldersKey,
                                       {QStringLiteral("no identifier"), uuidString(one.id).toLower()});
    library.restart();
    EXPECT_EQ(library.finder->hiddenFolderIDs(), QSet<QUuid>{one.id});
    library.finder->hideFolder(two);
    library.finder->unhideFolder(one);
    EXPECT_EQ(library.preferences.stringArray(foldersKey), QStringList(uuidString(two.id)));
    library.workspaces->createWorkspace({}, {}, {});
    library.restart();
    EXPECT_EQ(library.finder->hiddenFolderIDs(), QSet<QUuid>{two.id});
}

TEST_F(HiddenApps, OtherTypesAreEmpty)
{
    library.preferences.setData(appsKey, "[\"/apps/a\"]");
    library.preferences.setString(foldersKey, uuidString(QUuid::createUuid()));
    library.restart();
    EXPECT_TRUE(library.finder->hiddenAppPaths().isEmpty());
    EXPECT_TRUE(library.finder->hiddenFolderIDs().isEmpty());
}
