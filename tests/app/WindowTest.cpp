#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/WindowPlacement.h"
#include "foundation/NotificationCenter.h"
#include "foundation/PreferenceStore.h"
#include "foundation/StandardFolders.h"
#include "support/FakePlatform.h"

#include <QDir>
#include <QFile>
#include <QQuickWindow>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::FakeApplicationService;
using quillbay::testing::FakePlatform;

namespace {

class WindowWithSidebar : public QQuickWindow
{
    Q_OBJECT
    Q_PROPERTY(int sidebarWidth MEMBER m_sidebarWidth NOTIFY sidebarWidthChanged)

Q_SIGNALS:
    void sidebarWidthChanged();

private:
    int m_sidebarWidth = 240;
};

class WindowTest : public ::testing::Test
{
protected:
    WindowTest()
        : mainWindow(window, *fakes.windowEffects)
        , preferences(folder.filePath(QStringLiteral("preferences.sqlite")))
        , delegate(AppDelegate::Surroundings{mainWindow, preferences, notifications, service, *fakes.hotkey,
                                             [this] { return rulerShows; }})
    {
        QDir(stateFolder()).removeRecursively();
    }

    QTemporaryDir folder;
    FakePlatform fakes;
    FakeApplicationService service;
    NotificationCenter notifications;
    WindowWithSidebar window;
    MainWindow mainWindow;
    PreferenceStore preferences;
    bool rulerShows = false;
    AppDelegate delegate;
};

} // namespace

TEST(WindowPlacement, TakesThreeQuartersOfTheScreenFirst)
{
    EXPECT_EQ(firstPlacement(QRect(100, 0, 2000, 1000)),
              (WindowPlacement{{1500, 750}, QPoint(350, 125), false}));
    EXPECT_EQ(firstPlacement(QRect()).size, QSize(1080, 675));
    EXPECT_EQ(firstPlacement(QRect(0, 0, 800, 600)).size, smallestWindow);
}

TEST(WindowPlacement, KeepsAStoredPlaceThatCanBeReached)
{
    const QList<QRect> screens{{0, 0, 1440, 900}, {1440, 0, 1920, 1080}};
    EXPECT_EQ(restoredPlacement({{1000, 500}, QPoint(20, 30), false}, screens),
              (WindowPlacement{{1000, 600}, QPoint(20, 30), false}));
    EXPECT_TRUE(restoredPlacement({{1000, 700}, QPoint(3000, 10), true}, screens).position);
    EXPECT_FALSE(restoredPlacement({{1000, 700}, QPoint(4000, 10), false}, screens).position);
    EXPECT_FALSE(restoredPlacement({{1000, 700}, QPoint(10, -500), false}, screens).position);
}

TEST(WindowPlacement, SurvivesBadFiles)
{
    const WindowPlacement placement{{1000, 700}, QPoint(-5, 8), true, 280};
    EXPECT_EQ(decodePlacement(encodePlacement(placement)), placement);
    const WindowPlacement placeless{{1000, 700}, std::nullopt, false};
    EXPECT_EQ(decodePlacement(encodePlacement(placeless)), placeless);
    for (const char *text : {"", "[]", "{}", "{\"width\":0,\"height\":5}", "{\"width\":1e9,\"height\":5}",
                             "{\"width\":\"900\",\"height\":600}", "{\"width\":900"})
        EXPECT_FALSE(decodePlacement(text)) << text;
    EXPECT_FALSE(decodePlacement("{\"width\":900,\"height\":600,\"x\":1,\"y\":1e12}")->position);
    EXPECT_FALSE(decodePlacement("{\"width\":900,\"height\":600,\"sidebar\":\"wide\"}")->sidebarWidth);
}

TEST_F(WindowTest, FirstLaunchIsRememberedAndTheNextRestores)
{
    delegate.applicationDidFinishLaunching(false);
    EXPECT_EQ(preferences.boolean(QStringLiteral("QuillbayHasLaunchedBefore")), true);
    EXPECT_EQ(window.size(), firstPlacement(window.screen()->geometry()).size);
    EXPECT_EQ(window.minimumSize(), smallestWindow);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(service.started);
    EXPECT_EQ(fakes.hotkey->key, GlobalHotkeyManager::key);

    ASSERT_TRUE(savePlacement({{1000, 500}, QPoint(20, 30), false}));
    delegate.applicationDidFinishLaunching(false);
    EXPECT_EQ(window.size(), QSize(1000, 600));
    EXPECT_EQ(window.position(), QPoint(20, 30));
}

TEST_F(WindowTest, StoresWhereItWasLeft)
{
    mainWindow.setUp(false);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.resize(950, 640);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.size() == QSize(950, 640); }));
    mainWindow.hide();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto stored = loadPlacement();
        return stored && stored->size == QSize(950, 640);
    }));

    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.setProperty("sidebarWidth", 290);
    mainWindow.hide();
    EXPECT_TRUE(QTest::qWaitFor([] { return loadPlacement()->sidebarWidth == 290; }));
    window.setProperty("sidebarWidth", 240);
    mainWindow.setUp(true);
    EXPECT_EQ(window.property("sidebarWidth"), 290);
}

TEST_F(WindowTest, ClosingHidesAndKeepsTheWindow)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(window.isVisible());
}

TEST_F(WindowTest, ComesForwardByHotkeyAndReopening)
{
    delegate.applicationDidFinishLaunching(true);
    ASSERT_EQ(fakes.windowEffects->broughtForward.size(), 1u);
    QSignalSpy triggered(&notifications, &NotificationCenter::quillbayHotkeyTriggered);
    fakes.hotkey->press(QStringLiteral("token-1"));
    fakes.hotkey->press();
    EXPECT_EQ(triggered.count(), 0) << "the handler returns before it acts";
    ASSERT_TRUE(QTest::qWaitFor([&] { return triggered.count() == 2; }));
    service.activate(QStringLiteral("token-2"));
    ASSERT_EQ(fakes.windowEffects->broughtForward.size(), 4u);
    EXPECT_EQ(fakes.windowEffects->broughtForward[1].second, QStringLiteral("token-1"));
    EXPECT_EQ(fakes.windowEffects->broughtForward[3].second, QStringLiteral("token-2"));
    Q_EMIT mainWindow.becameKey();
    EXPECT_EQ(fakes.hotkey->keyboardTakenCount, 1);
}

TEST_F(WindowTest, TellsOfAReopeningWhileTheRulerShows)
{
    service.start();
    QSignalSpy reopened(&notifications, &NotificationCenter::quillbayAppReopened);
    service.activate({});
    EXPECT_EQ(reopened.count(), 0);
    rulerShows = true;
    service.activate({});
    EXPECT_EQ(reopened.count(), 1);
    fakes.hotkey->press();
    ASSERT_TRUE(QTest::qWaitFor([&] { return fakes.windowEffects->broughtForward.size() == 3; }));
    EXPECT_EQ(reopened.count(), 1) << "the hotkey reopens nothing";
}

TEST_F(WindowTest, HandsUrlsOnAndKnowsItsActions)
{
    service.start();
    QSignalSpy urls(&delegate, &AppDelegate::urlOpened);
    service.open({QStringLiteral("quillbay:a"), QStringLiteral("quillbay:b")});
    EXPECT_EQ(urls.count(), 2);

    const QString refused = folder.filePath(QStringLiteral("picture.txt"));
    service.requestAction(QStringLiteral("save-picture"), {refused});
    service.requestAction(QStringLiteral("save-picture"), {QStringLiteral("relative.png")});
    service.requestAction(QStringLiteral("save-picture"));
    service.requestAction(QStringLiteral("no-such-action"));
    EXPECT_FALSE(QFile::exists(refused));
    EXPECT_FALSE(QFile::exists(QStringLiteral("relative.png")));
}

#include "WindowTest.moc"
