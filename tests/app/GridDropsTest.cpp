#include "app/GridDrops.h"

#include "app/QuillbayViewModel.h"
#include "foundation/Uuid.h"
#include "support/TestLibrary.h"

#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::names;
using quillbay::testing::TestLibrary;

namespace {

QUrl url(const char *name)
{
    return QUrl::fromLocalFile(QStringLiteral("/apps/") + QString::fromLatin1(name));
}

QString path(const char *name)
{
    return url(name).path();
}

class GridDropsTest : public ::testing::Test
{
protected:
    GridDropsTest()
    {
        EXPECT_TRUE(library.install({QStringLiteral("a:X"), QStringLiteral("b:Y"), QStringLiteral("c:Z"),
                                     QStringLiteral("d:X"), QStringLiteral("out of it:X")}));
        QSignalSpy scanned(library.finder.get(), &AppFinder::scanFinished);
        model = std::make_unique<QuillbayViewModel>(*library.finder, *library.fakes.launcher,
                                                    *library.fakes.biometrics, library.preferences);
        EXPECT_TRUE(scanned.wait());
        drops = std::make_unique<GridDrops>(*model);
        library.finder->createFolder(QStringLiteral("F"), QStringLiteral("folder"),
                                     QStringLiteral("#007AFF"));
        for (const char *name : {"a", "b", "c", "d"})
            library.finder->addAppToFolder(library.app(QString::fromLatin1(name)), folder());
        id = uuidString(folder().id);
    }

    AppFolder folder() const { return library.folder(QStringLiteral("F")); }
    QString members() const { return names(library.finder->getAppsInFolder(folder())); }
    QString cells() const
    {
        QStringList list;
        for (const GridItemIdentifier &cell : model->unifiedGridItems()->items())
            list.append(cell.tag() == GridItemIdentifier::Tag::Folder ? QStringLiteral("F")
                                                                      : cell.categoryName());
        return list.join(QLatin1Char(' '));
    }

    TestLibrary library;
    std::unique_ptr<QuillbayViewModel> model;
    std::unique_ptr<GridDrops> drops;
    QString id;
};

TEST_F(GridDropsTest, AHoverMovesBeforeAndADropBehind)
{
    EXPECT_FALSE(drops->movesOnHover(path("c"), id)) << "nothing has been dragged yet";
    EXPECT_EQ(drops->beginAppDrag(path("a")), url("a"));
    EXPECT_TRUE(drops->movesOnHover(path("c"), id));
    EXPECT_FALSE(drops->movesOnHover(path("a"), id)) << "onto itself";
    EXPECT_FALSE(drops->movesOnHover(path("c"), {})) << "not in a folder";
    drops->hoverOnTile(path("c"), id);
    EXPECT_EQ(members(), QStringLiteral("b a c d"));
    EXPECT_TRUE(drops->dropOnTile({url("a")}, path("c"), id));
    EXPECT_EQ(members(), QStringLiteral("b c a d"));
    EXPECT_TRUE(drops->dropOnTile({url("d")}, path("b"), id));
    EXPECT_EQ(members(), QStringLiteral("d b c a"));
    EXPECT_EQ(model->draggedApp()->name, QStringLiteral("a")) << "stays after the drag";
    drops->hoverOnTile(path("d"), {});
    drops->hoverOnTile(path("a"), id);
    drops->hoverOnTile(path("out of it"), id);
    EXPECT_EQ(members(), QStringLiteral("d b c a"));
}

TEST_F(GridDropsTest, WhatCannotBeReorderedIsNotTaken)
{
    EXPECT_FALSE(drops->dropOnTile({}, path("a"), id));
    EXPECT_FALSE(drops->dropOnTile({url("a")}, path("b"), {}));
    EXPECT_FALSE(drops->dropOnTile({url("a")}, path("b"), uuidString(QUuid::createUuid())));
    EXPECT_FALSE(drops->dropOnTile({url("gone")}, path("b"), id));
    EXPECT_FALSE(drops->dropOnTile({url("out of it")}, path("b"), id));
    EXPECT_FALSE(drops->dropOnTile({url("a")}, path("out of it"), id));
    EXPECT_FALSE(drops->dropOnTile({QUrl(QStringLiteral("https://example.org/x"))}, path("b"), id));
    EXPECT_EQ(members(), QStringLiteral("a b c d"));
    EXPECT_TRUE(drops->beginAppDrag(path("gone")).isEmpty());
    model->deleteFolder(folder());
    EXPECT_FALSE(drops->dropOnTile({url("a")}, path("b"), id));
}

TEST_F(GridDropsTest, ApplicationsGoIntoFoldersInTheNextTurn)
{
    const auto turn = [] { QCoreApplication::processEvents(); };
    EXPECT_TRUE(drops->dropOnFolderCard({url("out of it"), url("a")}, id));
    EXPECT_EQ(members(), QStringLiteral("a b c d"));
    turn();
    EXPECT_EQ(members(), QStringLiteral("a b c d out of it"));
    EXPECT_FALSE(drops->dropOnFolderCard({url("a")}, {})) << "a category's card";
    EXPECT_FALSE(drops->dropOnFolderCard({}, id));
    EXPECT_FALSE(drops->dropOnFolderCard({url("gone")}, id));
    EXPECT_FALSE(drops->dropOnFolderCard({QUrl(QStringLiteral("http://a/apps/a"))}, id));

    library.finder->removeAppFromFolder(library.app(QStringLiteral("out of it")), folder());
    EXPECT_TRUE(drops->dropTextOnFolder(QString::fromLatin1(url("out of it").toEncoded()), id));
    EXPECT_TRUE(drops->dropTextOnFolder(QStringLiteral("no URL at all"), id))
        << "taken, and dropped silently";
    EXPECT_TRUE(drops->dropTextOnFolder(url("a").toString(), uuidString(QUuid::createUuid())));
    turn();
    EXPECT_EQ(members(), QStringLiteral("a b c d out of it"));
    EXPECT_TRUE(drops->takesText(url("a").toString()));
    EXPECT_FALSE(drops->takesText(QStringLiteral("category:X"))) << "a card";
    EXPECT_FALSE(drops->takesText({}));
}

TEST_F(GridDropsTest, ACardTakesThePlaceOfTheTarget)
{
    const auto folderText = QStringLiteral("folder:") + id;
    QList<GridItemIdentifier> arranged = {GridItemIdentifier::folder(folder().id)};
    for (const char *name : {"X", "Y", "Z"})
        arranged.append(GridItemIdentifier::category(QString::fromLatin1(name)));
    library.finder->reorderUnifiedItems({0}, 0, arranged);
    ASSERT_EQ(cells(), QStringLiteral("F X Y Z"));
    EXPECT_TRUE(drops->dropOnCell(folderText, QStringLiteral("category:Z")));
    EXPECT_EQ(cells(), QStringLiteral("X Y Z F"));
    EXPECT_TRUE(drops->dropOnCell(QStringLiteral("category:Z"), QStringLiteral("category:X")));
    EXPECT_EQ(cells(), QStringLiteral("Z X Y F"));
    for (const auto &[dragged, target] :
         {std::pair("category:None", "category:X"), std::pair("file:///apps/a", "category:X"),
          std::pair("category:X", "category:None"), std::pair("", "category:X")})
        EXPECT_FALSE(drops->dropOnCell(QString::fromLatin1(dragged), QString::fromLatin1(target)));
    EXPECT_EQ(cells(), QStringLiteral("Z X Y F"));
}

} // namespace
