#include "ui/ScreenTest.h"

#include <QQuickItem>
#include <QTest>

using namespace quillbay;
using quillbay::testing::FakeBiometrics;
using quillbay::testing::ScreenTest;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class LockTest : public ScreenTest
{
protected:
    void showHidden()
    {
        show("AppGridView { hostWindow: Window.window; isBrowsing: false }");
        select("hidden");
    }
    void select(const char *selection)
    {
        viewModel->setSelection(SidebarSelection(selection == std::string("hidden")
                                                     ? SidebarSelection::Case::hidden
                                                     : SidebarSelection::Case::allApps));
    }
    void setPassword(const char *password, bool useTouchID)
    {
        library.preferences.setString(text("quillbay_hidden_password"), text(password));
        library.preferences.setBoolean(text("quillbay_hidden_use_touchid"), useTouchID);
    }
    std::optional<QString> password() const
    {
        return library.preferences.string(text("quillbay_hidden_password"));
    }
    bool isAsked()
    {
        return waitFor([this] { return finger.isEvaluating(); });
    }
    /// Whether the screen says this, and nothing else, as what went wrong.
    bool says(const char *message)
    {
        return waitFor([&] { return shown(QAccessible::AlertMessage) == QStringList(text(message)); });
    }
    bool isReadyToType()
    {
        return waitFor([this] {
            const QQuickItem *field = find("Enter Password");
            return field && field->hasActiveFocus();
        });
    }
    bool isGone(const char *name)
    {
        return waitFor([&] { return find(name) == nullptr; });
    }
    void clear()
    {
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
    }

    FakeBiometrics &finger = *library.fakes.biometrics;
};

} // namespace

TEST_F(LockTest, APasswordIsAskedForTwiceAndOpensTheList)
{
    library.finder->hideApp(library.app(text("Ada")));
    showHidden();
    ASSERT_TRUE(await("Secure Hidden Items"));
    EXPECT_FALSE(find("Ada")) << "a list without a lock is not shown";
    ASSERT_TRUE(isReadyToType());

    click("Set Password & Enable Lock");
    EXPECT_TRUE(says("Password cannot be empty"));
    type("Secret");
    press(Qt::Key_Tab);
    type("secret");
    click("Set Password & Enable Lock");
    EXPECT_TRUE(says("Passwords do not match"));
    EXPECT_TRUE(find("Confirm Password")->hasActiveFocus()) << "a click leaves the keyboard where it is";
    for (QObject *field : {static_cast<QObject *>(find("Enter Password")),
                           static_cast<QObject *>(window->activeFocusItem())}) {
        QAccessibleInterface *node = QAccessible::queryAccessibleInterface(field);
        QAccessibleTextInterface *line = node->textInterface();
        EXPECT_FALSE(node->text(QAccessible::Value).contains(text("ecret")));
        EXPECT_FALSE(line && line->text(0, 6).contains(text("ecret")));
    }
    clear();
    type("Secret");
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    ASSERT_TRUE(await("Ada"));
    EXPECT_TRUE(isGone("Secure Hidden Items"));
    EXPECT_EQ(password(), text("Secret"));
    EXPECT_TRUE(viewModel->usesTouchID()) << "what was ticked";

    click("Lock");
    ASSERT_TRUE(await("Hidden Items Locked"));
    EXPECT_FALSE(find("Ada"));
    EXPECT_TRUE(await("Use Fingerprint"));
    EXPECT_FALSE(find("Forgot Password? Reset with Fingerprint")) << "no reader";
}

TEST_F(LockTest, AReaderHasToAgreeToThePassword)
{
    finger.usable = true;
    showHidden();
    ASSERT_TRUE(isReadyToType());
    type("p");
    press(Qt::Key_Tab);
    type("p");
    click("Set Password & Enable Lock");
    ASSERT_TRUE(isAsked());
    EXPECT_TRUE(await("Authenticate with Fingerprint to register new security password. "
                      "Touch the fingerprint reader"));
    finger.answer(false, text("The finger was not recognized"));
    EXPECT_TRUE(says("The finger was not recognized"));
    // Left while the reader waits: nobody is there to be told, and nothing is stored.
    click("Set Password & Enable Lock");
    ASSERT_TRUE(isAsked());
    ::testing::internal::CaptureStderr();
    select("allApps");
    EXPECT_TRUE(isGone("Secure Hidden Items"));
    QCoreApplication::processEvents();
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(password(), std::nullopt);
}

TEST_F(LockTest, ThePasswordOrAFingerOpensTheList)
{
    setPassword("Secret", true);
    finger.usable = true;
    library.finder->hideApp(library.app(text("Ada")));
    showHidden();
    ASSERT_TRUE(await("Unlock Hidden Items. Touch the fingerprint reader")) << "it comes by itself";
    EXPECT_FALSE(find("Ada"));
    click("Cancel");
    EXPECT_TRUE(isGone("Unlock Hidden Items. Touch the fingerprint reader"));
    ASSERT_TRUE(isReadyToType());
    EXPECT_EQ(shown(QAccessible::AlertMessage), QStringList()) << "and says nothing";

    // The search field behind it gets no key.
    for (const auto signal :
         {&NotificationCenter::quillbaySearchFocusRequested, &NotificationCenter::quillbayHotkeyTriggered})
        Q_EMIT(library.notifications.*signal)();
    QCoreApplication::processEvents();
    type("secret");
    press(Qt::Key_Return);
    EXPECT_TRUE(says("Incorrect Password"));
    EXPECT_EQ(viewModel->searchQuery(), QString());
    EXPECT_EQ(find("Enter Password")->property("password").toString(), text("secret")) << "it stays";
    click("Unlock");
    EXPECT_FALSE(viewModel->isHiddenUnlocked());
    type("Secret");
    press(Qt::Key_Return);
    ASSERT_TRUE(await("Ada"));
    EXPECT_TRUE(isGone("Hidden Items Locked"));

    const int checks = finger.checks;
    select("allApps");
    EXPECT_EQ(finger.checks, checks) << "an open list that is left asks for nothing";
    EXPECT_FALSE(find("Hidden Items Locked"));
    select("hidden");
    ASSERT_TRUE(isAsked());
    finger.answer(true);
    ASSERT_TRUE(await("Ada"));
    EXPECT_TRUE(isGone("Hidden Items Locked"));
    click("Lock");
    ASSERT_TRUE(isAsked());
    finger.answer(false);
    click("Use Fingerprint");
    ASSERT_TRUE(isAsked());
    finger.answer(true);
    ASSERT_TRUE(await("Ada"));
    click("Ada", Qt::RightButton);
    click("Unhide App Globally");
    EXPECT_TRUE(await("No Hidden Items"));
    EXPECT_TRUE(viewModel->isHiddenUnlocked());
    select("allApps");
    EXPECT_TRUE(library.finder->hiddenAppPaths().isEmpty());
    EXPECT_EQ(viewModel->filteredApps()->rowCount(), 4);
}

TEST_F(LockTest, AForgottenPasswordIsReplaced)
{
    setPassword("p", false);
    finger.usable = true;
    showHidden();
    ASSERT_TRUE(await("Forgot Password? Reset with Fingerprint"));
    EXPECT_FALSE(find("Use Fingerprint"));
    finger.usable = false;
    click("Forgot Password? Reset with Fingerprint");
    EXPECT_TRUE(says("Fingerprint is not available on this device"));
    EXPECT_TRUE(isGone("Forgot Password? Reset with Fingerprint")) << "known by now";
    finger.usable = true;
    finger.refresh();
    for (const bool success : {false, true}) {
        click("Forgot Password? Reset with Fingerprint");
        ASSERT_TRUE(isAsked());
        finger.answer(success);
        EXPECT_TRUE(success ? await("Secure Hidden Items") != nullptr
                            : says("Fingerprint Authentication failed"));
    }
    EXPECT_EQ(password(), std::nullopt);
}

TEST_F(LockTest, TheOpenListCanDoWithoutAPassword)
{
    setPassword("p", false);
    library.finder->hideApp(library.app(text("Ada")));
    showHidden();
    ASSERT_TRUE(isReadyToType());
    type("p");
    click("Unlock");
    ASSERT_TRUE(await("Ada"));
    finger.usable = true;
    click("Disable Password Lock");
    ASSERT_TRUE(isAsked());
    finger.answer(false, text("The finger was not recognized"));
    EXPECT_EQ(password(), text("p"));
    EXPECT_EQ(shown(QAccessible::AlertMessage), QStringList()) << "failures show nothing";
    finger.usable = false;
    click("Disable Password Lock");
    EXPECT_TRUE(await("Secure Hidden Items"));
    EXPECT_EQ(password(), std::nullopt);
}
