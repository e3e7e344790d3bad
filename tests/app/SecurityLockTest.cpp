#include "app/ExpandedCard.h"
#include "app/FolderContents.h"
#include "app/HiddenCards.h"
#include "app/QuillbayApp.h"
#include "app/QuillbayViewModel.h"
#include "foundation/Uuid.h"
#include "support/TestLibrary.h"

#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::FakeApplicationService;
using quillbay::testing::FakeBiometrics;
using quillbay::testing::names;
using quillbay::testing::TestLibrary;
using Case = SidebarSelection::Case;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class SecurityLockTest : public ::testing::Test
{
protected:
    SecurityLockTest()
    {
        EXPECT_TRUE(library.install({text("Ada:Office"), text("Bix:Games"), text("Cut:Office")}));
        QSignalSpy scanned(library.finder.get(), &AppFinder::scanFinished);
        model = std::make_unique<QuillbayViewModel>(*library.finder, *library.fakes.launcher, finger,
                                                    library.preferences);
        EXPECT_TRUE(scanned.wait());
        QObject::connect(model.get(), &SecurityLock::returnToFrontRequested, model.get(),
                         [this] { log.append(text("front")); });
        select(Case::hidden);
    }

    void select(Case which) { model->setSelection(SidebarSelection(which)); }
    void setPassword(const char *password, bool useTouchID = false)
    {
        library.preferences.setString(text("quillbay_hidden_password"), text(password));
        library.preferences.setBoolean(text("quillbay_hidden_use_touchid"), useTouchID);
    }
    /// "password flag open", with - for what is not there.
    QString state() const
    {
        const PreferenceStore &stored = library.preferences;
        const auto flag = stored.boolean(text("quillbay_hidden_use_touchid"));
        return stored.string(text("quillbay_hidden_password")).value_or(text("-")) + QLatin1Char(' ') +
               (!flag   ? text("-")
                : *flag ? text("true")
                        : text("false")) +
               (model && model->isHiddenUnlocked() ? text(" open") : QString());
    }
    /// Writes what it was told into `log`.
    SecurityLock::Completion completion()
    {
        return [this](bool success, const QString &message) {
            log.append(success ? text("yes") + message : text("no: ") + message);
        };
    }
    /// Whether the question for a finger has come.
    bool isAsked()
    {
        return QTest::qWaitFor([this] { return finger.isEvaluating(); });
    }
    /// Lets everything that waits in the event loop happen.
    static void settle()
    {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }
    QString take() { return std::exchange(log, {}).join(u' '); }

    TestLibrary library;
    FakeBiometrics finger;
    std::unique_ptr<QuillbayViewModel> model;
    QStringList log;
};

} // namespace

TEST_F(SecurityLockTest, WithoutBiometricsAPasswordIsStoredAtOnce)
{
    EXPECT_EQ(state(), text("- -"));
    QSignalSpy announced(model.get(), &ObservableObject::objectWillChange);
    model->setSecurityPassword(text(" Open sesame "), true, completion());
    ASSERT_TRUE(QTest::qWaitFor([&] { return model->isHiddenUnlocked(); }));
    settle();
    EXPECT_EQ(state(), text(" Open sesame  true open"));
    EXPECT_GE(announced.count(), 2);
    EXPECT_EQ(take(), QString()) << "nobody is told, and nothing comes to the front";
    EXPECT_TRUE(finger.reasons.isEmpty());

    model->setIsHiddenUnlocked(false);
    EXPECT_TRUE(model->isLocked());
    for (const char *wrong : {"", "Open sesame", " open sesame ", " Open sesame", " Open sesame  "}) {
        EXPECT_FALSE(model->checkPassword(text(wrong))) << wrong;
        EXPECT_FALSE(model->isHiddenUnlocked());
    }
    EXPECT_TRUE(model->checkPassword(text(" Open sesame ")));
    EXPECT_FALSE(model->isLocked());

    model->setIsHiddenUnlocked(false);
    setPassword("");
    EXPECT_FALSE(model->isSecurityPasswordSet()) << "an empty one is none";
    EXPECT_TRUE(model->checkPassword({}));
    EXPECT_TRUE(model->isHiddenUnlocked());
}

TEST_F(SecurityLockTest, WithBiometricsAPasswordIsStoredAfterTheirSuccess)
{
    finger.usable = true;
    for (const char *error : {"", "Too cold"}) {
        model->setSecurityPassword(text("p"), false, completion());
        ASSERT_TRUE(isAsked()) << "also with the flag off";
        EXPECT_EQ(finger.reasons.last(),
                  text("Authenticate with Fingerprint to register new security password"));
        finger.answer(false, text(error));
        EXPECT_EQ(take(), text(*error ? "no: Too cold front" : "no: Fingerprint setup failed front"));
        EXPECT_EQ(state(), text("- -"));
    }
    for (const char *password : {"q", "p"}) {
        model->setSecurityPassword(text(password), false, completion());
        ASSERT_TRUE(isAsked());
        settle();
    }
    EXPECT_EQ(take(), QString()) << "the first gave way to the second, which is still open";
    finger.answer(true);
    EXPECT_EQ(take(), text("yes front"));
    EXPECT_EQ(state(), text("p false open"));
}

TEST_F(SecurityLockTest, EachOperationAsksForAFingerInItsOwnWay)
{
    finger.usable = true;
    const struct
    {
        std::function<void()> start;
        bool opensFirst;
        const char *reason;
        const char *failure; ///< Without a text of the system's, and with one.
        const char *failureWithText;
        const char *success;
        const char *stateAfterwards;
    } operations[] = {
        {[this] { model->tryTouchID(); }, false, "Unlock Hidden Items", "front", "front", "front",
         "p true open"},
        {[this] { model->resetPasswordUsingTouchID(completion()); }, false, "Authenticate to Reset Password",
         "no: Fingerprint Authentication failed front", "no: Too cold front", "yes front", "- false"},
        {[this] { model->disableSecurityWithTouchID(completion()); }, true,
         "Authenticate to disable password lock", "no: Fingerprint verification failed front",
         "no: Too cold front", "yes front", "- false"},
        {[this] { model->askAndDisableSecurity(); }, true, "Authenticate to disable password lock", "front",
         "front", "front", "- false"},
    };
    for (const auto &operation : operations) {
        SCOPED_TRACE(operation.reason);
        setPassword("p", true);
        model->setIsHiddenUnlocked(operation.opensFirst);
        for (const char *error : {"", "Too cold"}) {
            operation.start();
            ASSERT_TRUE(isAsked());
            EXPECT_EQ(finger.reasons.last(), text(operation.reason));
            EXPECT_EQ(model->biometricPrompt(), text(operation.reason));
            finger.answer(false, text(error));
            EXPECT_EQ(take(), text(*error ? operation.failureWithText : operation.failure));
            EXPECT_EQ(state(), text(operation.opensFirst ? "p true open" : "p true"));
        }
        operation.start();
        ASSERT_TRUE(isAsked());
        finger.answer(true);
        EXPECT_EQ(take(), text(operation.success));
        EXPECT_EQ(state(), text(operation.stateAfterwards));
    }
}

TEST_F(SecurityLockTest, WithoutBiometricsNothingIsProven)
{
    setPassword("p", true);
    library.finder->hideApp(library.app(text("Ada")));
    model->tryTouchID();
    settle();
    EXPECT_EQ(take(), QString());
    for (const char *error : {"", "No fingerprint is enrolled"}) {
        finger.error = text(error);
        model->resetPasswordUsingTouchID(completion());
        settle();
        EXPECT_EQ(take(),
                  text("no: ") + text(*error ? error : "Fingerprint is not available on this device"));
    }
    EXPECT_EQ(state(), text("p true"));
    model->askAndDisableSecurity();
    settle();
    EXPECT_EQ(state(), text("p true")) << "that is for the open list";
    ASSERT_TRUE(model->checkPassword(text("p")));
    model->askAndDisableSecurity();
    settle();
    EXPECT_EQ(state(), text("- false"));
    EXPECT_TRUE(finger.reasons.isEmpty());
    EXPECT_EQ(names(library.finder->getHiddenApps()), text("Ada"));
}

TEST_F(SecurityLockTest, WhatWasAskedForBeforeLeavingOpensNothing)
{
    const auto leaveAndComeBack = [this] {
        select(Case::allApps);
        select(Case::hidden);
        finger.answerChecks();
        settle();
        finger.holdsChecks = true;
    };
    finger.holdsChecks = true;
    model->setSecurityPassword(text("p"), true, completion());
    leaveAndComeBack();
    EXPECT_EQ(state(), text("p true")) << "the user had asked for the lock";
    EXPECT_TRUE(model->isLocked());

    finger.usable = true;
    model->resetPasswordUsingTouchID(completion());
    leaveAndComeBack();
    EXPECT_FALSE(finger.isEvaluating());
    for (int i = 0; i < 2; ++i) {
        model->tryTouchID();
        if (i == 0) {
            leaveAndComeBack();
        } else {
            finger.answerChecks();
            ASSERT_TRUE(finger.isEvaluating());
            select(Case::recents);
        }
        settle();
        EXPECT_FALSE(finger.isEvaluating());
        EXPECT_TRUE(model->isLocked());
    }

    select(Case::hidden);
    ASSERT_TRUE(model->checkPassword(text("p")));
    model->askAndDisableSecurity();
    model->setIsHiddenUnlocked(false);
    finger.usable = false;
    finger.answerChecks();
    EXPECT_EQ(state(), text("p true")) << "closed meanwhile: no proof, no change";

    // The password opens the list: the question for a finger is over.
    finger.usable = true;
    model->tryTouchID();
    finger.answerChecks();
    ASSERT_TRUE(finger.isEvaluating());
    ASSERT_TRUE(model->checkPassword(text("p")));
    EXPECT_FALSE(finger.isEvaluating());
}

TEST_F(SecurityLockTest, AModelThatIsGoneStillStoresThePassword)
{
    finger.usable = true;
    model->setSecurityPassword(text("p"), true, completion());
    ASSERT_TRUE(isAsked());
    model.reset();
    finger.answer(true);
    EXPECT_EQ(state(), text("p -")) << "what belongs to the model is not written";
    EXPECT_EQ(take(), text("yes"));
}

TEST_F(SecurityLockTest, TheMachineIsAskedAnewWhenTheListIsOpened)
{
    settle();
    const int before = finger.checks;
    finger.usable = true;
    QSignalSpy changed(model.get(), &SecurityLock::canUseBiometricsChanged);
    select(Case::allApps);
    EXPECT_EQ(finger.checks, before);
    select(Case::hidden);
    EXPECT_EQ(finger.checks, before + 1);
    EXPECT_TRUE(changed.wait());
    EXPECT_TRUE(model->canUseBiometrics());
}

TEST_F(SecurityLockTest, ALockedListShowsNowhere)
{
    AppFinder &finder = *library.finder;
    finder.createFolder(text("Mine"), {}, {});
    for (const char *name : {"Ada", "Bix"})
        finder.addAppToFolder(library.app(text(name)), library.folder(text("Mine")));
    finder.createFolder(text("Other"), {}, {});
    FolderContents contents(*model);
    const HiddenCards cards(*model, contents);
    ExpandedCard expanded(*model, contents);
    finder.addToRecents(library.app(text("Ada")));
    select(Case::allApps);
    expanded.expandCategory(text("Office"));
    ASSERT_EQ(names(expanded.apps()->items()), text("Ada Cut"));
    expanded.close();
    finder.hideApp(library.app(text("Ada")));
    EXPECT_EQ(names(expanded.apps()->items()), QString()) << "nor in a panel that is kept for the next";
    finder.hideFolder(library.folder(text("Mine")));
    setPassword("p");

    const auto shown = [&] {
        settle();
        const AppListModel *mine = contents.apps(uuidString(library.folder(text("Mine")).id));
        QStringList lists{names(model->filteredApps()->items()),
                          names(mine->items()),
                          QString::number(cards.count()),
                          names(model->appsNotInFolder(library.folder(text("Other")))),
                          names(finder.getRecentAppsForSearch()),
                          names(finder.getSearchSuggestions(text("a")))};
        if (model->groupedAppsByCategory()->group(text("Office")))
            lists.append(text("Office"));
        return lists.join(u'|');
    };
    EXPECT_EQ(shown(), text("Bix Cut|Bix|0|Bix Cut||Bix|Office")) << "everything else";
    for (const char *query : {"", "a", "Ada"}) {
        model->setSearchQuery(text(query));
        select(Case::hidden);
        EXPECT_EQ(shown(), text("|Bix|0|Bix Cut||Bix")) << "locked, with the query " << query;
    }
    model->setSearchQuery({});
    // A panel left open over another list shows nothing of this one.
    expanded.expandCategory(text("Office"));
    settle();
    EXPECT_FALSE(expanded.isExpanded());
    EXPECT_EQ(names(expanded.apps()->items()), QString());

    ASSERT_TRUE(model->checkPassword(text("p")));
    EXPECT_EQ(shown(), text("Ada|Ada Bix|1|Ada Bix Cut||Bix|Office"));

    // On the way out nothing is listed any more when the next list comes up, and no locked list comes
    // between.
    QStringList seen;
    const auto look = [&] {
        const bool isHidden = model->selection()->which() == Case::hidden;
        seen.append(text(isHidden ? "hidden " : "next ") + names(model->filteredApps()->items()));
    };
    QObject::connect(model.get(), &SecurityLock::isHiddenUnlockedChanged, model.get(), look);
    QObject::connect(model.get(), &QuillbayViewModel::selectionChanged, model.get(), look);
    select(Case::allApps);
    EXPECT_EQ(seen, QStringList({text("next "), text("next Bix Cut")}));
    EXPECT_EQ(cards.count(), 0);
}

TEST_F(SecurityLockTest, TheProgramComesForwardAfterAnEvaluation)
{
    auto *effects = library.fakes.windowEffects;
    auto *reader = library.fakes.biometrics;
    FakeApplicationService service;
    QuillbayApp app(library.fakes.services, service, library.preferences, *library.workspaces,
                    library.notifications);
    QQuickWindow window;
    app.finishLaunching(window, false);
    window.show();
    reader->usable = true;
    setPassword("p");
    app.viewModel().setSelection(SidebarSelection(Case::hidden));
    for (const bool isShown : {true, false}) {
        window.setVisible(isShown);
        effects->broughtForward.clear();
        app.viewModel().tryTouchID();
        ASSERT_TRUE(QTest::qWaitFor([&] { return reader->isEvaluating(); }));
        reader->answer(false);
        EXPECT_EQ(effects->broughtForward.size(), isShown ? 1u : 0u) << "a closed window stays closed";
    }
}
