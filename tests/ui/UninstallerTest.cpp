#include "uninstaller/Uninstaller.h"

#include "support/FakePackageManager.h"
#include "ui/ScreenTest.h"
#include "uninstaller/ResidualFixture.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <set>

namespace quillbay::testing {
namespace {

platform::FileResult notPermitted()
{
    return {platform::FileResult::Outcome::NotPermitted, QStringLiteral("Permission denied")};
}

/// Acme is a file in its user's home, with preferences, a cache and a log.
class UninstallerTest : public ScreenTest
{
protected:
    UninstallerTest()
    {
        tree.useLinuxLayout();
        app.name = QStringLiteral("Acme");
        app.path = QFile::decodeName(tree.file("~/Applications/Acme.AppImage", 4'000));
        preferences = tree.file("~/.config/acme.plist", 600);
        cache = tree.folder("~/.cache/acme");
        tree.file("~/.cache/acme/x", 1'400);
        tree.file("~/.cache/acme/y", 1'000);
        useUninstaller(tree.roots, packages);
    }
    ~UninstallerTest() override
    {
        window.reset();
        uninstaller.reset();
        tree.roots->gate.open();
        QThreadPool::globalInstance()->waitForDone();
    }

    void open(const char *awaited = "Found items")
    {
        show("Item { CustomTextField { placeholder: 'Behind'; width: 100; Component.onCompleted: "
             "requestFocus() }\n"
             "Loader { active: ViewModel.appToUninstall !== ''; source: "
             "'qrc:/qt-project.org/imports/Quillbay/Ui/UninstallerSheet.qml' } }");
        ASSERT_TRUE(waitFor([&] { return find("Behind")->hasActiveFocus(); }));
        viewModel->setAppToUninstall(app);
        await(awaited);
        settle();
    }
    /// What moves is hard to hit.
    void settle()
    {
        ASSERT_TRUE(waitFor([&] { return find("Uninstall App") && isSettled(*find("Uninstall App")); }));
    }
    static bool isSettled(const QQuickItem &item)
    {
        for (const QQuickItem *at = &item; at; at = at->parentItem()) {
            if (at->scale() != 1 || at->opacity() != 1)
                return false;
        }
        return true;
    }
    /// Clicks what has just come up, once it stands still.
    void answer(const char *name)
    {
        ASSERT_TRUE(waitFor([&] { return find(name) && isSettled(*find(name)); })) << name;
        click(name);
    }
    bool isEnabled(const char *name) { return await(name)->isEnabled(); }
    bool isChecked(const char *row)
    {
        return QAccessible::queryAccessibleInterface(await(row))->state().checked;
    }
    bool shows(const char *name) const
    {
        return waitFor([&] { return find(name) != nullptr; });
    }
    bool isGone(const char *name) const
    {
        return waitFor([&] { return find(name) == nullptr; });
    }
    bool isClosed() const
    {
        return waitFor([&] { return !viewModel->appToUninstall() && find("Behind")->hasActiveFocus(); });
    }

    MadeTree tree;
    AppItem app;
    QByteArray preferences;
    QByteArray cache;
    FakePlatform &fakes = library.fakes;
    FakeFullDiskAccess &access = *fakes.fullDiskAccess;
    std::shared_ptr<FakePackageManager> packages = std::make_shared<FakePackageManager>();
};

TEST_F(UninstallerTest, TheGateOpensBySystemSettingsAlone)
{
    access.isGranted = false;
    open("File Access Required");
    EXPECT_TRUE(find("Size of the selection: Zero KB"));
    EXPECT_EQ(access.openings, 0);
    click("Open Settings");
    EXPECT_EQ(access.openings, 1);
    EXPECT_FALSE(find("Found items"));
    access.isGranted = true;
    EXPECT_TRUE(shows("Found items"));
    EXPECT_TRUE(isGone("File Access Required"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(isClosed());

    access.isGranted = false;
    viewModel->setAppToUninstall(app);
    answer("Cancel");
    EXPECT_TRUE(isClosed());
}

TEST_F(UninstallerTest, AScanTellsItsStepAndCanBeLeft)
{
    tree.roots->gate.close();
    open("Locating app bundle…");
    EXPECT_TRUE(find("Uninstall Acme"));
    EXPECT_FALSE(find("Size of the selection: Zero KB"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(isClosed());
    viewModel->setAppToUninstall(app);
    EXPECT_TRUE(shows("Locating app bundle…"));
    tree.roots->gate.open();
    EXPECT_TRUE(shows("Found items"));
    EXPECT_TRUE(isGone("Locating app bundle…"));
}

TEST_F(UninstallerTest, RowsAreSelectedByPointerByKeyboardAndByCategory)
{
    open();
    EXPECT_TRUE(find("Items found: 3"));
    EXPECT_TRUE(find("Selected: 3"));
    EXPECT_TRUE(find("To free: 7 KB"));
    EXPECT_TRUE(find("Caches (1 item), 2 KB"));
    click("acme.plist");
    EXPECT_FALSE(isChecked("acme.plist"));
    EXPECT_TRUE(find("Selected: 2"));
    click("Deselect All");
    EXPECT_TRUE(find("Selected: 0"));
    EXPECT_TRUE(find("Caches (1 item), 2 KB")) << "counts what is not selected, too";
    EXPECT_FALSE(isEnabled("Move to Trash"));
    EXPECT_FALSE(isEnabled("Delete Permanently"));

    find("Found items")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_TRUE(isChecked("acme.plist"));
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    press(Qt::Key_Space);
    EXPECT_TRUE(find("Selected: 1"));
    EXPECT_TRUE(isEnabled("Move to Trash"));
    click("Select All");
    EXPECT_TRUE(find("Selected: 3"));
}

TEST_F(UninstallerTest, HeadingsStandOverTheirOwnRowsHoweverItIsScrolled)
{
    const std::pair<const char *, const char *> places[] = {
        {"~/.config/autostart", "Launch Agents & Daemons"},
        {"~/.config", "Preferences"},
        {"~/.local/share", "Application Support"},
        {"~/.cache", "Caches"},
        {"~/.local/state", "Logs"},
        {"~/Applications", "Application"}};
    for (const auto &[folder, category] : places) {
        for (int i = 0; i < 12; ++i)
            tree.file(folder + QByteArray("/acme-") + QByteArray::number(i));
    }
    open();
    const auto headingOf = [](QQuickItem *item) {
        for (QQuickItem *at : QList<QQuickItem *>{item} + item->childItems()) {
            const QAccessibleInterface *node = QAccessible::queryAccessibleInterface(at);
            if (node && node->role() == QAccessible::Heading)
                return node->text(QAccessible::Name).section(QStringLiteral(" ("), 0, 0);
        }
        return QString();
    };
    QQuickItem *list = find("Found items");
    std::set<QString> seen;
    const auto misplaced = [&] {
        QList<QQuickItem *> items = list->property("contentItem").value<QQuickItem *>()->childItems();
        items.removeIf([](QQuickItem *item) { return !item->isVisible() || item->height() == 0; });
        std::stable_sort(items.begin(), items.end(), [](auto *a, auto *b) { return a->y() < b->y(); });
        const qreal top = list->property("contentY").toDouble();
        QString over;
        QStringList wrong;
        for (QQuickItem *item : std::as_const(items)) {
            const QString path = item->property("path").toString();
            if (const QString heading = headingOf(item); !heading.isEmpty())
                over = heading;
            else if (path.isEmpty() || item->y() < top || item->y() > top + list->height())
                continue;
            else if (const auto *place = std::find_if(
                         std::begin(places), std::end(places),
                         [&](const auto &one) { return path.toUtf8().startsWith(tree.path(one.first)); });
                     over != QLatin1String(place->second))
                wrong += path + QStringLiteral(" below ") + over;
            seen.insert(over);
        }
        return wrong.join(u'\n').toStdString();
    };
    const auto go = [&](qreal step, const char *end) {
        while (!list->property(end).toBool()) {
            list->setProperty("contentY", list->property("contentY").toDouble() + step);
            waitFor([&] { return misplaced().empty(); });
            ASSERT_EQ(misplaced(), "");
        }
    };
    go(130, "atYEnd");
    go(-130, "atYBeginning");
    EXPECT_EQ(seen.size(), std::size(places));
}

TEST_F(UninstallerTest, ALockedRowIsSelectedOnlyWithAllOthers)
{
    app.path = QStringLiteral("/apps/Acme"); // where there is nothing, nothing may be deleted
    open();
    EXPECT_TRUE(find("Selected: 2"));
    const auto *row = QAccessible::queryAccessibleInterface(await("Acme.app"));
    EXPECT_TRUE(
        row->text(QAccessible::Description).contains(QStringLiteral("Requires administrator access")));
    click("Acme.app");
    find("Found items")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_FALSE(isChecked("Acme.app"));
    click("Select All");
    EXPECT_TRUE(find("Selected: 3"));
    EXPECT_TRUE(isChecked("Acme.app"));
    click("Acme.app");
    EXPECT_TRUE(isChecked("Acme.app"));
}

TEST_F(UninstallerTest, OfTheSystemNothingCanBeDeleted)
{
    app.path = QStringLiteral("/System/Applications/Acme.app");
    open();
    EXPECT_TRUE(find("System apps are protected by the system and cannot be deleted."));
    click("Select All");
    EXPECT_TRUE(find("Selected: 3"));
    EXPECT_FALSE(isEnabled("Move to Trash"));
    EXPECT_FALSE(isEnabled("Delete Permanently"));
    click("Delete Permanently");
    EXPECT_FALSE(find("Permanently Delete Files"));
}

TEST_F(UninstallerTest, DeletingForGoodAsksFirst)
{
    open();
    click("Delete Permanently");
    const char *question = "This will permanently delete 3 items (7 KB). This cannot be undone.";
    EXPECT_TRUE(shows(question));
    press(Qt::Key_Return); // on the way out
    EXPECT_TRUE(isGone(question));
    EXPECT_TRUE(QFile::exists(app.path));
    EXPECT_TRUE(find("Found items"));

    click("Delete Permanently");
    answer("Permanently Delete");
    EXPECT_TRUE(shows("Removed 3 items · Freed 7 KB"));
    EXPECT_FALSE(QFile::exists(app.path) || QFile::exists(QFile::decodeName(cache)));
    EXPECT_FALSE(find("Put Back"));
    answer("Done");
    EXPECT_TRUE(isClosed());
}

TEST_F(UninstallerTest, WhatWentToTheTrashCanBePutBack)
{
    open();
    click("acme.plist");
    click("Move to Trash");
    EXPECT_TRUE(shows("Removed 2 items · Freed 6 KB"));
    EXPECT_FALSE(QFile::exists(app.path));
    EXPECT_TRUE(QFile::exists(QFile::decodeName(preferences)));
    answer("Put Back");
    EXPECT_TRUE(shows("2 items were put back."));
    EXPECT_TRUE(QFile::exists(app.path) && QFile::exists(QFile::decodeName(cache + "/x")));
    EXPECT_TRUE(isGone("Put Back"));
}

TEST_F(UninstallerTest, WhereNothingWentTheListStaysAndAMessageTellsWhy)
{
    fakes.trash->failure = [](const QByteArray &) { return notPermitted(); };
    open();
    click("Move to Trash");
    EXPECT_TRUE(shows("Cannot Delete Files"));
    const QStringList messages = shown(QAccessible::AlertMessage);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages.first().count(QLatin1Char('\n')), 2) << messages.first().toStdString();
    answer("OK");
    EXPECT_TRUE(isGone("Cannot Delete Files"));
    EXPECT_TRUE(find("Selected: 3"));
    EXPECT_TRUE(QFile::exists(app.path));
}

TEST_F(UninstallerTest, WhatCouldNotGoIsNamedInTheResult)
{
    fakes.trash->failure = [this](const QByteArray &path) -> std::optional<platform::FileResult> {
        if (path == preferences)
            return std::nullopt;
        return notPermitted();
    };
    open();
    click("Move to Trash");
    EXPECT_TRUE(shows("Removed 1 items · Freed 600 bytes"));
    EXPECT_TRUE(find("2 item(s) could not be removed:"));
    EXPECT_EQ(shown(QAccessible::StaticText).filter(QStringLiteral("• ")).size(), 2);
}

TEST_F(UninstallerTest, APackageGoesOnlyWhenItsRemovalWasApproved)
{
    packages->install(QFile::encodeName(app.path), QStringLiteral("acme"), {QStringLiteral("acme-data")});
    open();
    click("Deselect All");
    click("acme, Debian package");
    click("Move to Trash");
    ASSERT_TRUE(shows("Remove Package"));
    const QStringList going{QStringLiteral("acme"), QStringLiteral("acme-data")};
    EXPECT_TRUE(waitFor([&] { return shown(QAccessible::ListItem) == going; }));
    answer("Keep");
    EXPECT_TRUE(shows("Cannot Delete Files"));
    answer("OK");
    EXPECT_TRUE(isGone("Cannot Delete Files"));
    EXPECT_TRUE(packages->removals.isEmpty());

    click("Move to Trash");
    answer("Remove");
    EXPECT_TRUE(shows("Uninstall Complete"));
    EXPECT_EQ(packages->removals.size(), 1);
    EXPECT_FALSE(find("Put Back"));
}

TEST_F(UninstallerTest, TheMenuOfATileOpensItAndTheKeyboardComesBack)
{
    show("AppGridView { hostWindow: Window.window; isBrowsing: false }");
    click("Ada", Qt::RightButton);
    answer("Uninstall App…");
    EXPECT_TRUE(shows("Uninstall Ada"));
    EXPECT_TRUE(shows("Found items"));
    const QQuickItem *sheet = find("Uninstall App");
    for (int i = 0; i < 12; ++i) {
        press(Qt::Key_Tab);
        EXPECT_TRUE(sheet->isAncestorOf(window->activeFocusItem())) << i;
    }
    press(Qt::Key_Escape);
    EXPECT_TRUE(waitFor([&] { return !viewModel->appToUninstall(); }));
    EXPECT_TRUE(isGone("Uninstall Ada"));
    EXPECT_TRUE(waitFor([&] { return find("Search Apps...") && find("Search Apps...")->hasActiveFocus(); }));
}

} // namespace
} // namespace quillbay::testing
