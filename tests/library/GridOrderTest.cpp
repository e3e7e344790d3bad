#include "library/GridOrder.h"

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

class GridOrderTest : public ::testing::Test
{
protected:
    GridOrderTest() { create({"a", "b"}); }

    void create(const std::initializer_list<const char *> list)
    {
        for (const char *name : list)
            library.finder->createFolder(text(name), {}, {});
    }
    QList<GridItemIdentifier> cells() const
    {
        return unifiedGridItems(library.finder->getRootFolders(), categories,
                                library.finder->getUnifiedGridOrder());
    }
    /// Folders by their names, categories in upper case, as the grid shows them.
    QString shown() const
    {
        QStringList list;
        for (const GridItemIdentifier &cell : cells()) {
            if (cell.tag() == GridItemIdentifier::Tag::Category)
                list.append(cell.categoryName());
            for (const AppFolder &folder : library.finder->folders()) {
                if (cell.folderID() == folder.id)
                    list.append(folder.name);
            }
        }
        return list.join(u' ');
    }
    QString key() const { return library.workspaces->key(text("unifiedGridOrder")); }
    void drag(qsizetype from, qsizetype to) { library.finder->reorderUnifiedItems({from}, to, cells()); }

    TestLibrary library;
    QSet<QString> categories{text("G")};
};

} // namespace

TEST_F(GridOrderTest, ShowsFoldersFirstUntilADragStoresAll)
{
    EXPECT_EQ(shown(), text("a b G"));
    categories = {text("G"), text("H"), text("I"), text("J")};
    EXPECT_EQ(cells().size(), 6);
    EXPECT_EQ(shown(), text("a b G I H J")) << "the same in every run";
    EXPECT_FALSE(library.preferences.stringArray(key()));

    categories = {text("G")};
    drag(2, 0);
    EXPECT_EQ(shown(), text("G a b"));
    EXPECT_EQ(library.preferences.stringArray(key())->first(), text("category:G"));
    EXPECT_EQ(library.folder(text("a")).sortOrder, 1) << "with a gap where the category stands";
    create({"c", "d"});
    categories.insert(text("H"));
    EXPECT_EQ(shown(), text("c d G a b H"));
    library.restart();
    ASSERT_TRUE(library.scan());
    EXPECT_EQ(shown(), text("c d G a b H"));
}

TEST_F(GridOrderTest, DoesNotSortTheFoldersAndIsNotChangedByTheSidebar)
{
    drag(0, 2);
    EXPECT_EQ(shown(), text("b a G"));
    EXPECT_EQ(names(library.finder->folders()), text("a b"));
    library.finder->loadFolders();
    EXPECT_EQ(names(library.finder->folders()), text("b a"));
    library.finder->reorderFolders({0}, 2);
    EXPECT_EQ(names(library.finder->folders()), text("a b"));
    EXPECT_EQ(shown(), text("b a G"));
}

TEST_F(GridOrderTest, SkipsWhatIsStaleBrokenOrRepeatedAndKeepsItStored)
{
    const QString a = GridItemIdentifier::folder(library.folder(text("a")).id).stringRepresentation();
    const QStringList list{
        text("category:Gone"), a, text("folder:broken"), text("category:G"), a.toLower(), text("x"), a};
    library.preferences.setStringArray(key(), list);
    EXPECT_EQ(shown(), text("b a G"));
    EXPECT_EQ(library.preferences.stringArray(key()), list);
    categories.insert(text("Gone"));
    EXPECT_EQ(shown(), text("b Gone a G"));
    categories.clear();
    drag(0, 2);
    EXPECT_EQ(library.preferences.stringArray(key())->size(), 2);

    // A value of another type is none.
    library.preferences.setData(key(), "[]");
    EXPECT_EQ(shown(), text("a b"));
    library.workspaces->createWorkspace(text("Play"), {}, {});
    EXPECT_EQ(shown(), QString());
}
