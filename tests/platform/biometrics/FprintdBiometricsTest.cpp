#include "platform/linux/biometrics/FprintdBiometrics.h"

#include "platform/biometrics/FakeFprintd.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>
#include <unistd.h>

using quillbay::platform::FprintdBiometrics;
using quillbay::testing::FakeFprintd;
using quillbay::testing::PrivateBus;

namespace {

/// The service plays in the test's own thread: a call that waited for it would wait for ever.
class FprintdBiometricsTest : public ::testing::Test
{
protected:
    void startService() { fprintd = std::make_unique<FakeFprintd>(bus); }
    void start(const FprintdBiometrics::Limits &limits = {2000, 10000})
    {
        biometrics = std::make_unique<FprintdBiometrics>([this] { return client; }, limits);
    }

    /// "yes", "no", or the error.
    std::string check()
    {
        QStringList said;
        biometrics->check(into(said));
        EXPECT_TRUE(said.isEmpty()) << "no answer comes before the call returns";
        EXPECT_TRUE(waitFor([&said] { return !said.isEmpty(); }));
        return said.join(u'|').toStdString();
    }
    void evaluate(const char *reason = "Why") { biometrics->evaluate(QLatin1String(reason), into(answers)); }
    /// All answers that have come, once there are `count`.
    std::string answered(int count = 1)
    {
        EXPECT_TRUE(waitFor([&] { return answers.size() == count; }));
        return std::exchange(answers, {}).join(u'|').toStdString();
    }
    std::string evaluated()
    {
        evaluate();
        return answered();
    }
    bool isReleased()
    {
        return waitFor([this] { return fprintd->claimer.isEmpty() && !fprintd->isVerifying; });
    }
    bool isAsking(const char *reason = "Why")
    {
        return waitFor([&] { return biometrics->prompt() == QLatin1String(reason); });
    }
    std::string calls() const { return fprintd->calls.join(u' ').toStdString(); }

    static bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 10000); }
    static FprintdBiometrics::Answer into(QStringList &list)
    {
        return [&list](bool success, const QString &error) {
            list.append(!error.isEmpty() ? error : QLatin1String(success ? "yes" : "no"));
        };
    }
    static QStringList words(const char *text)
    {
        return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
    }

    PrivateBus bus;
    QDBusConnection client = bus.connect();
    std::unique_ptr<FakeFprintd> fprintd;
    std::unique_ptr<FprintdBiometrics> biometrics;
    QStringList answers;
};

} // namespace

TEST_F(FprintdBiometricsTest, IsUsableWithAReaderAndAFinger)
{
    start();
    EXPECT_EQ(check(), "no") << "no service at all";
    EXPECT_EQ(evaluated(), "no");

    startService();
    EXPECT_TRUE(waitFor([&] { return biometrics->isUsable(); })) << "a service has come";
    fprintd->present = false;
    EXPECT_EQ(check(), "no");
    EXPECT_FALSE(biometrics->isUsable());
    fprintd->present = true;
    const QStringList fingers = std::exchange(fprintd->fingers, {});
    EXPECT_EQ(check(), "No fingerprint is enrolled");
    fprintd->fingers = fingers;
    EXPECT_EQ(check(), "yes");
    EXPECT_TRUE(biometrics->isUsable());

    fprintd.reset();
    EXPECT_TRUE(waitFor([&] { return !biometrics->isUsable(); })) << "nobody can start it again";
    bus.stop();
    EXPECT_EQ(check(), "no") << "no bus";
    EXPECT_EQ(evaluated(), "no");
}

TEST_F(FprintdBiometricsTest, AServiceThatEndsWhenIdleIsNotStartedForNothing)
{
    const QString started = QDir::temp().filePath(QStringLiteral("quillbay-fprintd-%1").arg(getpid()));
    bus.addService(QStringLiteral("net.reactivated.Fprint"), QStringLiteral("/bin/touch ") + started);
    startService();
    start();
    ASSERT_EQ(check(), "yes");
    QSignalSpy changed(biometrics.get(), &FprintdBiometrics::usableChanged);
    fprintd.reset();
    EXPECT_FALSE(changed.wait(300)) << "the bus can start it";
    EXPECT_FALSE(QFile::exists(started));
    EXPECT_NE(check(), "yes");
    EXPECT_TRUE(QFile::remove(started)) << "only who asks has it started";
    EXPECT_FALSE(biometrics->isUsable());
}

TEST_F(FprintdBiometricsTest, AnswersWhatTheReaderSawAndFreesIt)
{
    const std::string once = "Claim VerifyStart VerifyStop Release";
    const std::string thrice =
        "Claim VerifyStart VerifyStop VerifyStart VerifyStop VerifyStart VerifyStop Release";
    const struct
    {
        const char *results;
        const char *refused; ///< A method and the error.
        const char *answer;
        std::string calls;
    } cases[] = {
        {"verify-match", "", "yes", once},
        {"verify-retry-scan verify-swipe-too-short verify-match", "", "yes", once},
        {"verify-no-match verify-remove-and-retry verify-no-match verify-match", "", "yes", thrice},
        {"verify-no-match verify-no-match verify-no-match verify-match", "", "The finger was not recognized",
         thrice},
        {"verify-disconnected", "", "The fingerprint reader was disconnected", once},
        {"verify-unknown-error", "", "The fingerprint reader reported an error", once},
        {"", "Claim AlreadyInUse", "The fingerprint reader is in use by another program", "Claim"},
        {"", "Claim PermissionDenied", "This session may not use the fingerprint reader", "Claim"},
        {"", "Claim Internal", "refused: Internal", "Claim"},
        {"", "VerifyStart NoEnrolledPrints", "No fingerprint is enrolled", "Claim VerifyStart Release"},
        {"verify-match", "VerifyStop Internal", "yes", once},
    };
    startService();
    start();
    for (const auto &[results, refused, answer, expected] : cases) {
        SCOPED_TRACE(std::string(results) + refused);
        fprintd->results = words(results);
        fprintd->refusals.clear();
        if (*refused)
            fprintd->refusals.insert(words(refused)[0], words(refused)[1]);
        EXPECT_EQ(evaluated(), answer);
        EXPECT_TRUE(waitFor([&] { return calls() == expected; })) << calls();
        EXPECT_TRUE(*refused || isReleased());
        EXPECT_TRUE(biometrics->prompt().isEmpty());
        fprintd->isVerifying = false;
        fprintd->calls.clear();
    }
}

TEST_F(FprintdBiometricsTest, AServiceThatDoesNotAnswerIsGivenUp)
{
    const std::string late = "The fingerprint reader does not answer";
    for (const std::string method : {"GetDefaultDevice", "Claim", "VerifyStart", "VerifyStop", "Release"}) {
        SCOPED_TRACE(method);
        startService();
        fprintd->silentMethod = QString::fromStdString(method);
        const bool hangsOnTheWayBack = method == "VerifyStop" || method == "Release";
        if (hangsOnTheWayBack)
            fprintd->results = words("verify-no-match verify-match");
        start({100, 10000});
        EXPECT_EQ(evaluated(), hangsOnTheWayBack ? "yes" : late);
        EXPECT_TRUE(isReleased()) << "a claim whose answer is late is a claim";
        EXPECT_EQ(check(), method == "GetDefaultDevice" ? late : "yes");
        biometrics.reset();
        fprintd.reset();
    }
}

TEST_F(FprintdBiometricsTest, WithoutAFingerItEndsInTimeOrForTheNext)
{
    startService();
    start({2000, 100});
    EXPECT_EQ(evaluated(), "No finger was read in time");
    EXPECT_TRUE(isReleased());

    start();
    evaluate();
    ASSERT_TRUE(isAsking());
    biometrics->cancel();
    EXPECT_TRUE(answers.isEmpty()) << "not before the call returns";
    EXPECT_EQ(answered(), "no");
    EXPECT_TRUE(isReleased());
    evaluate();
    biometrics->cancel();
    evaluate();
    EXPECT_TRUE(waitFor([&] { return !fprintd->claimer.isEmpty(); }));
    biometrics->cancel(); // with the claim on its way back
    EXPECT_EQ(answered(2), "no|no");
    EXPECT_TRUE(isReleased());

    evaluate("First");
    ASSERT_TRUE(isAsking("First"));
    evaluate("Second");
    evaluate("Third");
    ASSERT_TRUE(isAsking("Third"));
    fprintd->report(QStringLiteral("verify-match"));
    EXPECT_EQ(answered(3), "no|no|yes");
    EXPECT_TRUE(isReleased());
}

TEST_F(FprintdBiometricsTest, OnlyTheServiceItselfCanReportAMatch)
{
    startService();
    start();
    evaluate();
    ASSERT_TRUE(isAsking());
    QDBusConnection stranger = bus.connect();
    for (const QString &destination : {QString(), client.baseService()}) {
        QDBusMessage lie = QDBusMessage::createTargetedSignal(destination, FakeFprintd::readerPath,
                                                              QStringLiteral("net.reactivated.Fprint.Device"),
                                                              QStringLiteral("VerifyStatus"));
        lie << QStringLiteral("verify-match") << true;
        ASSERT_TRUE(stranger.send(lie));
    }
    // Once the bus has answered the stranger, and us after that, what he sent has been heard.
    ASSERT_TRUE(stranger.registerService(QStringLiteral("org.quillbay.test.Stranger")));
    EXPECT_EQ(check(), "yes");
    EXPECT_TRUE(answers.isEmpty());
    fprintd->report(QStringLiteral("verify-disconnected"));
    EXPECT_EQ(answered(), "The fingerprint reader was disconnected");
}

TEST_F(FprintdBiometricsTest, NeitherEndLeavesTheOtherWaiting)
{
    startService();
    start();
    evaluate();
    ASSERT_TRUE(isAsking());
    fprintd.reset();
    EXPECT_EQ(answered(), "The fingerprint service has ended");
    startService();
    evaluate();
    ASSERT_TRUE(isAsking());
    biometrics.reset();
    EXPECT_TRUE(isReleased());
    EXPECT_TRUE(answers.isEmpty());
}
