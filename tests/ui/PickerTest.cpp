#include "app/AppPicker.h"
#include "ui/ScreenTest.h"

namespace quillbay::testing {
namespace {

class PickerTest : public ScreenTest
{
protected:
    PickerTest()
    {
        library.finder->createFolder(QStringLiteral("Work"), {}, {});
        add("Dot");
    }
    void add(const char *app)
    {
        library.finder->addAppToFolder(library.app(QString::fromLatin1(app)),
                                       library.folder(QStringLiteral("Work")));
    }
    void ask()
    {
        viewModel->setFolderForPicker(library.folder(QStringLiteral("Work")));
        viewModel->setShowingAppPicker(true);
        // It has come in full: what moves is hard to hit.
        ASSERT_TRUE(
            waitFor([&] { return find("Search apps...") && find("Search apps...")->hasActiveFocus(); }));
        ASSERT_TRUE(waitFor([&] { return find("Add Apps")->parentItem()->scale() == 1; }));
    }
    void open()
    {
        show("Item { CustomTextField { placeholder: 'Behind'; Component.onCompleted: requestFocus() }\n"
             "Loader { active: ViewModel.showingAppPicker; source: "
             "'qrc:/qt-project.org/imports/Quillbay/Ui/AppPickerView.qml' } }");
        ASSERT_TRUE(waitFor([&] { return find("Behind")->hasActiveFocus(); }));
        ask();
    }
    bool lists(const char *apps) const
    {
        return waitFor(
            [&] { return shown(QAccessible::CheckBox).join(QLatin1Char(' ')) == QLatin1String(apps); });
    }
    bool isSelected(const char *app)
    {
        return QAccessible::queryAccessibleInterface(await(app))->state().checked;
    }
    bool isTaken(const char *app)
    {
        return !QAccessible::queryAccessibleInterface(await(app))->text(QAccessible::Description).isEmpty();
    }
    bool isClosed() const
    {
        return waitFor([&] { return !viewModel->showingAppPicker() && find("Behind")->hasActiveFocus(); });
    }
};

TEST_F(PickerTest, AddsWhatWasSelectedInThatOrderWhateverTheSearchShows)
{
    open();
    EXPECT_TRUE(find("Select apps to add to Work"));
    EXPECT_TRUE(lists("Ada Bix Cut"));
    click("Cut");
    EXPECT_TRUE(isSelected("Cut"));
    type("a");
    EXPECT_TRUE(lists("Ada"));
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_TRUE(isSelected("Ada"));
    press(Qt::Key_Up);
    ASSERT_TRUE(waitFor([&] { return find("Search apps...")->hasActiveFocus(); }));
    type("x");
    EXPECT_TRUE(lists(""));
    EXPECT_EQ(members("Work"), QStringLiteral("Dot"));
    press(Qt::Key_Return);
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(members("Work"), QStringLiteral("Dot Cut Ada"));

    ask();
    click("Bix");
    click("Bix");
    EXPECT_FALSE(isSelected("Bix"));
    click("Done");
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(members("Work"), QStringLiteral("Dot Cut Ada"));
}

TEST_F(PickerTest, LeavingItDropsTheSelection)
{
    open();
    click("Ada");
    press(Qt::Key_Escape);
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(members("Work"), QStringLiteral("Dot"));
}

TEST_F(PickerTest, FollowsTheLibraryWhileItIsOpen)
{
    open();
    click("Bix");
    click("Cut");
    add("Bix");
    ASSERT_TRUE(waitFor([&] { return isTaken("Bix"); }));
    EXPECT_FALSE(isSelected("Bix"));
    click("Bix");
    EXPECT_FALSE(isSelected("Bix"));
    press(Qt::Key_Down);
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_FALSE(isSelected("Bix"));

    library.finder->removeAppFromFolder(library.app(QStringLiteral("Dot")),
                                        library.folder(QStringLiteral("Work")));
    ASSERT_TRUE(library.install({QStringLiteral("Ada"), QStringLiteral("Bix"), QStringLiteral("Dot")}));
    ASSERT_TRUE(lists("Ada Bix Dot"));
    ASSERT_TRUE(library.install({QStringLiteral("Ada"), QStringLiteral("Bix"), QStringLiteral("Cut")}));
    ASSERT_TRUE(lists("Ada Bix Cut"));
    EXPECT_FALSE(isSelected("Cut")); // for it was away
    click("Ada");
    click("Done");
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(members("Work"), QStringLiteral("Bix Ada"));
}

TEST_F(PickerTest, ListsNobodyWhereAllAreInTheFolderOrThereIsNone)
{
    for (const char *app : {"Ada", "Bix", "Cut"})
        add(app);
    open();
    EXPECT_TRUE(lists(""));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(isClosed());
    viewModel->setFolderForPicker(std::nullopt);
    AppPicker picker;
    picker.setViewModel(viewModel.get());
    EXPECT_FALSE(picker.hasFolder());
    EXPECT_EQ(picker.count(), 0);
}

} // namespace
} // namespace quillbay::testing
