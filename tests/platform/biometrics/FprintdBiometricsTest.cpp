#include "platform/linux/biometrics/FprintdBiometrics.h"

#include "platform/biometrics/FakeFprintd.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using quillbay::platform::FprintdBiometrics;
using quillbay::testing::FakeFprintd;
using quillbay::testing::PrivateBus;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString missing()
{
    return QStringLiteral("net.reactivated.Fprint");
}

/// The service plays in the test's own thread: a call that waited for it would wait for ever.
class FprintdBiometricsTest : public ::testing::Test
{
protected:
    void startService() { fprintd = std::make_unique<FakeFprintd>(bus); }

    /// Made after the service, if there is to be one at the start. Waits for the first check.
    void start(const FprintdBiometrics::Limits &limits = {2000, 10000})
    {
        make(limits);
        EXPECT_NE(check(), QStringLiteral("silence"));
    }
    void make(const FprintdBiometrics::Limits &limits)
    {
        biometrics = std::make_unique<FprintdBiometrics>([this] { return client; }, limits);
    }

    /// "yes", "no", or the error.
    QString check()
    {
        QString answer = text("silence");
        biometrics->check([&answer](bool usable, const QString &error) { answer = said(usable, error); });
        EXPECT_EQ(answer, text("silence")) << "no answer comes before the call returns";
        EXPECT_TRUE(waitFor([&answer] { return answer != text("silence"); }));
        return answer;
    }
    /// The answer is in `answers`, in the order of their arrival.
    void evaluate(const char *reason = "Why")
    {
        biometrics->evaluate(text(reason), [this](bool success, const QString &error) {
            answers.append(said(success, error));
        });
    }
    QString evaluated()
    {
        answers.clear();
        evaluate();
        EXPECT_TRUE(waitFor([this] { return !answers.isEmpty(); }));
        return answers.join(QLatin1Char(' '));
    }
    bool isReleased()
    {
        return waitFor([this] { return !fprintd->isClaimed() && !fprintd->isVerifying; });
    }
    bool isAskingForAFinger()
    {
        return waitFor([this] { return !biometrics->prompt().isEmpty(); });
    }

    static bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 10000); }
    static QString said(bool success, const QString &error)
    {
        return !error.isEmpty() ? error : success ? text("yes") : text("no");
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
    EXPECT_EQ(check(), text("no")) << "no service at all";
    EXPECT_EQ(evaluated(), text("no"));

    startService();
    QSignalSpy changed(biometrics.get(), &FprintdBiometrics::usableChanged);
    EXPECT_TRUE(waitFor([&] { return biometrics->isUsable(); })) << "a service has come";
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(check(), text("yes"));
    fprintd->present = false;
    EXPECT_EQ(check(), text("no"));
    EXPECT_FALSE(biometrics->isUsable());
    EXPECT_EQ(evaluated(), text("no"));
    fprintd->present = true;
    fprintd->fingers.clear();
    EXPECT_EQ(check(), text("No fingerprint is enrolled"));
    fprintd->fingers.append(text("left-thumb"));
    EXPECT_EQ(check(), text("yes"));

    fprintd.reset();
    EXPECT_TRUE(waitFor([&] { return !biometrics->isUsable(); })) << "nobody can start it again";
    bus.stop();
    EXPECT_EQ(check(), text("no")) << "no bus";
    EXPECT_EQ(evaluated(), text("no"));
}

TEST_F(FprintdBiometricsTest, AServiceThatEndsWhenIdleIsNotStartedForNothing)
{
    // Its file could not start anything, so nobody but the bus knows of the name.
    bus.addService(missing(), text("/bin/false"));
    startService();
    start();
    ASSERT_TRUE(biometrics->isUsable());
    QSignalSpy changed(biometrics.get(), &FprintdBiometrics::usableChanged);
    fprintd.reset();
    EXPECT_FALSE(changed.wait(300));
    EXPECT_TRUE(biometrics->isUsable()) << "the bus can start it";
    EXPECT_NE(check(), text("yes"));
    EXPECT_FALSE(biometrics->isUsable()) << "it cannot";
}

TEST_F(FprintdBiometricsTest, AnswersWhatTheReaderSaw)
{
    const struct
    {
        QStringList results;
        const char *answer;
        int starts;
    } cases[] = {
        {{text("verify-match")}, "yes", 1},
        {{text("verify-retry-scan"), text("verify-swipe-too-short"), text("verify-match")}, "yes", 1},
        {{text("verify-no-match"), text("verify-finger-not-centered"), text("verify-no-match"),
          text("verify-match")},
         "yes",
         3},
        {{text("verify-no-match"), text("verify-no-match"), text("verify-no-match"), text("verify-match")},
         "The finger was not recognized",
         3},
        {{text("verify-disconnected")}, "The fingerprint reader was disconnected", 1},
        {{text("verify-unknown-error")}, "The fingerprint reader reported an error", 1},
    };
    startService();
    start();
    for (const auto &[results, answer, starts] : cases) {
        SCOPED_TRACE(results.join(QLatin1Char(' ')).toStdString());
        fprintd->results = results;
        fprintd->calls.clear();
        EXPECT_EQ(evaluated(), text(answer));
        EXPECT_TRUE(isReleased());
        EXPECT_EQ(fprintd->calls.count(text("VerifyStart")), starts);
        EXPECT_EQ(fprintd->calls.count(text("VerifyStop")), starts);
        EXPECT_EQ(fprintd->calls.last(), text("Release"));
        EXPECT_TRUE(biometrics->prompt().isEmpty());
    }
}

TEST_F(FprintdBiometricsTest, SaysWhyTheReaderRefuses)
{
    const struct
    {
        const char *method;
        const char *error;
        const char *answer;
        QStringList calls;
    } cases[] = {
        {"Claim", "AlreadyInUse", "The fingerprint reader is in use by another program", {text("Claim")}},
        {"Claim", "PermissionDenied", "This session may not use the fingerprint reader", {text("Claim")}},
        {"Claim", "Internal", "refused: Internal", {text("Claim")}},
        {"VerifyStart",
         "NoEnrolledPrints",
         "No fingerprint is enrolled",
         {text("Claim"), text("VerifyStart"), text("Release")}},
        {"VerifyStop",
         "Internal",
         "yes",
         {text("Claim"), text("VerifyStart"), text("VerifyStop"), text("Release")}},
    };
    startService();
    start();
    for (const auto &[method, error, answer, calls] : cases) {
        SCOPED_TRACE(error);
        fprintd->results = {text("verify-match")};
        fprintd->refusals = {{text(method), text(error)}};
        fprintd->calls.clear();
        EXPECT_EQ(evaluated(), text(answer));
        EXPECT_TRUE(waitFor([&] { return fprintd->calls == calls; }))
            << fprintd->calls.join(u' ').toStdString();
        fprintd->isVerifying = false;
    }
}

TEST_F(FprintdBiometricsTest, AServiceThatDoesNotAnswerIsGivenUp)
{
    for (const char *method : {"GetDefaultDevice", "Claim", "VerifyStart", "VerifyStop", "Release"}) {
        SCOPED_TRACE(method);
        startService();
        start({100, 10000});
        fprintd->silentMethod = text(method);
        if (method != std::string("VerifyStart"))
            fprintd->results = {text("verify-no-match"), text("verify-match")};
        const QString answer = evaluated();
        // The match comes through where only the way back hangs.
        const bool hangs = method != std::string("VerifyStop") && method != std::string("Release");
        EXPECT_EQ(answer, hangs ? text("The fingerprint reader does not answer") : text("yes"));
        if (method != std::string("GetDefaultDevice")) {
            EXPECT_TRUE(waitFor([&] {
                return fprintd->calls.value(fprintd->calls.size() - 1) == text("Release");
            })) << fprintd->calls.join(u' ').toStdString();
            EXPECT_TRUE(isReleased()) << "a claim whose answer was late is a claim";
        } else {
            EXPECT_EQ(check(), text("The fingerprint reader does not answer"));
            EXPECT_FALSE(biometrics->isUsable());
        }
        biometrics.reset();
        fprintd.reset();
    }
}

TEST_F(FprintdBiometricsTest, WithoutAFingerItEndsInTimeAndWhenCancelled)
{
    startService();
    start({2000, 100});
    EXPECT_EQ(evaluated(), text("No finger was read in time"));
    EXPECT_TRUE(isReleased());

    start();
    answers.clear();
    evaluate("Unlock");
    ASSERT_TRUE(isAskingForAFinger());
    EXPECT_EQ(biometrics->prompt(), text("Unlock"));
    biometrics->cancel();
    EXPECT_TRUE(answers.isEmpty()) << "not before the call returns";
    EXPECT_TRUE(waitFor([&] { return !answers.isEmpty(); }));
    EXPECT_TRUE(isReleased());
    EXPECT_TRUE(biometrics->prompt().isEmpty());
    EXPECT_EQ(answers, QStringList(text("no")));

    // Cancelled at once, or with the reader being claimed, it is as over.
    evaluate();
    biometrics->cancel();
    evaluate();
    EXPECT_TRUE(waitFor([&] { return fprintd->isClaimed(); }));
    biometrics->cancel();
    EXPECT_TRUE(waitFor([&] { return answers.size() == 3; }));
    EXPECT_TRUE(isReleased());
    fprintd->results = {text("verify-match")};
    EXPECT_EQ(evaluated(), text("yes"));
}

TEST_F(FprintdBiometricsTest, TheLastOfSeveralEvaluationsHasTheReader)
{
    startService();
    start();
    evaluate("First");
    ASSERT_TRUE(isAskingForAFinger());
    evaluate("Second");
    evaluate("Third");
    ASSERT_TRUE(waitFor([&] { return biometrics->prompt() == text("Third"); }));
    EXPECT_EQ(answers, QStringList({text("no"), text("no")}));
    fprintd->report(text("verify-match"));
    EXPECT_TRUE(waitFor([&] { return answers.size() == 3; }));
    EXPECT_EQ(answers.last(), text("yes"));
    EXPECT_TRUE(isReleased());
}

TEST_F(FprintdBiometricsTest, OnlyTheServiceItselfCanReportAMatch)
{
    startService();
    start();
    evaluate();
    ASSERT_TRUE(isAskingForAFinger());
    QDBusConnection stranger = bus.connect();
    for (const QString &destination : {QString(), client.baseService()}) {
        QDBusMessage lie =
            QDBusMessage::createTargetedSignal(destination, FakeFprintd::readerPath,
                                               text("net.reactivated.Fprint.Device"), text("VerifyStatus"));
        lie << text("verify-match") << true;
        ASSERT_TRUE(stranger.send(lie));
    }
    // What the stranger says next comes after what he said before.
    QSignalSpy heard(biometrics.get(), &FprintdBiometrics::promptChanged);
    ASSERT_TRUE(stranger.registerService(text("org.quillbay.test.Stranger")));
    EXPECT_EQ(check(), text("yes"));
    EXPECT_TRUE(answers.isEmpty());
    fprintd->report(text("verify-no-match"));
    EXPECT_TRUE(waitFor([&] { return fprintd->calls.count(text("VerifyStart")) == 2; }));
    EXPECT_TRUE(answers.isEmpty());
    EXPECT_EQ(heard.count(), 0);
}

TEST_F(FprintdBiometricsTest, AServiceThatDiesEndsTheEvaluation)
{
    startService();
    start();
    evaluate();
    ASSERT_TRUE(isAskingForAFinger());
    fprintd.reset();
    EXPECT_TRUE(waitFor([&] { return !answers.isEmpty(); }));
    EXPECT_EQ(answers, QStringList(text("The fingerprint service has ended")));
    startService();
    fprintd->results = {text("verify-match")};
    EXPECT_EQ(evaluated(), text("yes"));
    EXPECT_TRUE(isReleased());
}

TEST_F(FprintdBiometricsTest, TheEndOfTheProgramFreesTheReader)
{
    startService();
    start();
    evaluate();
    ASSERT_TRUE(isAskingForAFinger());
    biometrics.reset();
    EXPECT_TRUE(isReleased());
    EXPECT_TRUE(answers.isEmpty());
    make({}); // and one that has not even seen the bus
    biometrics->check([this](bool, const QString &) { answers.append(text("late")); });
    biometrics.reset();
    QCoreApplication::processEvents();
    EXPECT_TRUE(answers.isEmpty());
}
