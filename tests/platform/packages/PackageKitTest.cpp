#include "platform/packages/ManagerFixture.h"
#include "platform/packages/PackageKitStandIn.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QElapsedTimer>

#include <functional>
#include <memory>

namespace quillbay::platform {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using testing::FakeTools;
using ::testing::IsEmpty;
using testing::PackageKitStandIn;
using Verdict = RemovalPreview::Verdict;

const QString app = QStringLiteral("app");
const QString appId = QStringLiteral("app;1.0;all;manual:store");
const QString helperId = QStringLiteral("helper;2.0;vax;auto:store");
const QString helper = QStringLiteral("helper:vax");

class PackageKitRemoval : public testing::ManagerFixture
{
protected:
    PackageKitRemoval()
        : connection(bus.connect())
    {
        makeDebianSystem();
        tools.answerFacts({FakeTools::factsLine(app), FakeTools::factsLine(helper)});
        tools.forgetCalls();
        surroundings.systemBus = [this] { return connection; };
        restart();
    }

    void restart()
    {
        service.reset();
        service = std::make_unique<PackageKitStandIn>(bus.connect());
        service->resolve.packages = {{1, appId}};
        service->simulation.packages = {{13, appId}, {13, helperId}};
    }

    QStringList removals() const { return service->calls.filter(QStringLiteral("RemovePackages 0 ")); }

    testing::PrivateBus bus;
    QDBusConnection connection;
    std::unique_ptr<PackageKitStandIn> service;
    const QStringList approved = {app, helper};
};

TEST_F(PackageKitRemoval, SimulatesThenRemovesWhatWasApproved)
{
    const RemovalPreview preview = simulate(debian(app));
    EXPECT_EQ(preview.verdict, Verdict::Allowed) << qPrintable(preview.reason);
    EXPECT_EQ(preview.packages, approved);
    EXPECT_THAT(service->calls,
                ElementsAre(QStringLiteral("SetHints interactive=false background=false"),
                            QStringLiteral("Resolve 4 app"),
                            QStringLiteral("SetHints interactive=false background=false"),
                            QStringLiteral("RemovePackages 4 ") + appId + QStringLiteral(" true false")));

    service->calls.clear();
    const RemovalResult result = remove(debian(app), approved);
    EXPECT_EQ(result.outcome, RemovalOutcome::Removed) << qPrintable(result.text);
    EXPECT_THAT(service->calls, Contains(QStringLiteral("SetHints interactive=true background=false")));
    EXPECT_THAT(removals(),
                ElementsAre(QStringLiteral("RemovePackages 0 %1 %2 false false").arg(appId, helperId)));
    EXPECT_THAT(elevated, IsEmpty());
    EXPECT_THAT(removingCalls(), IsEmpty());
    EXPECT_THAT(tools.calls().filter(QStringLiteral("apt-get")), IsEmpty());
}

TEST_F(PackageKitRemoval, ListsThePackageItselfWhereTheBackendDoesNot)
{
    service->simulation.packages = {{13, helperId}};
    EXPECT_EQ(simulate(debian(app)).packages, approved);
    service->simulation.packages = {};
    EXPECT_THAT(simulate(debian(app)).packages, ElementsAre(app));
}

TEST_F(PackageKitRemoval, NeverHappensForAnotherListOrARefusedOne)
{
    EXPECT_EQ(remove(debian(app), {app}).outcome, RemovalOutcome::Changed);
    tools.answerFacts(
        {FakeTools::factsLine(app), FakeTools::factsLine(helper, QStringLiteral("yes|no|optional"))});
    EXPECT_EQ(remove(debian(app), approved).outcome, RemovalOutcome::Refused);
    EXPECT_THAT(removals(), IsEmpty());
    EXPECT_THAT(elevated, IsEmpty());
}

TEST_F(PackageKitRemoval, IsSimulatedByTheNativeToolWhereTheServiceCannot)
{
    tools.answerFacts({FakeTools::factsLine(app)});
    const std::vector<std::pair<const char *, std::function<void()>>> troubles = {
        {"no transaction", [&] { service->refusesTransactions = true; }},
        {"not known", [&] { service->resolve.packages = {}; }},
        {"another of the name",
         [&] {
             service->resolve.packages = {{1, QStringLiteral("app2;1;all;x")}};
         }},
        {"not installed",
         [&] {
             service->resolve.packages = {{2, appId}};
         }},
        {"two of them",
         [&] {
             service->resolve.packages = {{1, appId}, {1, QStringLiteral("app;2.0;all;x")}};
         }},
        {"garbled",
         [&] {
             service->resolve.packages = {{1, QStringLiteral("app;;;;;")}};
         }},
        {"a failure",
         [&] {
             service->simulation.errorCode = 13;
             service->simulation.exit = 2;
         }},
        {"an error with success", [&] { service->simulation.errorCode = 4; }},
        {"a D-Bus error",
         [&] { service->simulation.refusal = QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"); }},
        {"an installation",
         [&] {
             service->simulation.packages.push_back({12, QStringLiteral("new;1;all;x")});
         }},
        {"a hostile name",
         [&] {
             service->simulation.packages.push_back({13, QStringLiteral("--force;1;all;x")});
         }},
        {"a name without fields",
         [&] {
             service->simulation.packages.push_back({13, QStringLiteral("helper")});
         }},
        {"too many",
         [&] {
             for (int i = 0; i < 20001; ++i)
                 service->simulation.packages.push_back({13, QStringLiteral("p%1;1;all;x").arg(i)});
         }},
        {"too long",
         [&] {
             service->simulation.packages = {{13, QString(5000, u'a') + QStringLiteral(";1;all;x")}};
         }},
        {"a service that ends",
         [&] {
             service->simulation.isSilent = true;
             service->simulation.first = [&] { service->vanish(); };
         }},
        {"no service", [&] { service->vanish(); }},
    };
    for (const auto &[what, trouble] : troubles) {
        restart();
        elevated.clear();
        trouble();
        const RemovalPreview preview = simulate(debian(app));
        EXPECT_EQ(preview.verdict, Verdict::Allowed) << what << ": " << qPrintable(preview.reason);
        EXPECT_THAT(preview.packages, ElementsAre(app)) << what;
        service->simulation.first = {};
        EXPECT_EQ(remove(debian(app), {app}).outcome, RemovalOutcome::Removed) << what;
        EXPECT_EQ(elevated.size(), 1) << what;
        EXPECT_THAT(removals(), IsEmpty()) << what;
    }
}

TEST_F(PackageKitRemoval, TellsWhyItDidNotHappenAndTriesNoOtherWay)
{
    const auto outcome = [this](const PackageKitStandIn::Answer &answer) {
        service->removal = answer;
        return remove(debian(app), approved);
    };
    const QString words = QStringLiteral("words of the service");
    const RemovalResult refused = outcome({{}, 48, words, 2, false, {}, {}});
    EXPECT_EQ(refused.outcome, RemovalOutcome::NotAuthorised);
    EXPECT_EQ(refused.text, words);
    EXPECT_EQ(outcome({{},
                       0,
                       {},
                       2,
                       false,
                       QStringLiteral("org.freedesktop.PackageKit.Transaction.RefusedByPolicy"),
                       {}})
                  .outcome,
              RemovalOutcome::NotAuthorised);
    EXPECT_EQ(outcome({{}, 17, words, 3, false, {}, {}}).outcome, RemovalOutcome::Declined);
    EXPECT_EQ(outcome({{}, 59, words, 2, false, {}, {}}).text, words);
    EXPECT_EQ(outcome({{}, 0, {}, 2, false, {}, {}}).outcome, RemovalOutcome::Failed);
    EXPECT_EQ(outcome({{}, 0, {}, 0, false, {}, {}}).outcome, RemovalOutcome::Failed);
    const RemovalResult ended = outcome({{}, 0, {}, 1, true, {}, [this] { service->vanish(); }});
    EXPECT_EQ(ended.outcome, RemovalOutcome::Failed);
    EXPECT_FALSE(ended.text.isEmpty());
    EXPECT_THAT(elevated, IsEmpty());
    EXPECT_THAT(removingCalls(), IsEmpty());
}

TEST_F(PackageKitRemoval, EndsWithinItsLimitAndAsksTheServiceToGiveUp)
{
    service->removal.isSilent = true;
    surroundings.removalLimit = 300ms;
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(remove(debian(app), approved).outcome, RemovalOutcome::Failed);
    EXPECT_LT(timer.elapsed(), 60000);
    // The message is on its way when the call has ended.
    for (timer.start(); !service->calls.contains(QStringLiteral("Cancel")) && timer.elapsed() < 10000;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_THAT(service->calls, Contains(QStringLiteral("Cancel")));
    EXPECT_THAT(elevated, IsEmpty());
}

TEST_F(PackageKitRemoval, BelievesNoOtherPeer)
{
    // A stranger on the bus says that the transaction has ended well, before the service says that it has
    // not.
    QDBusConnection stranger = bus.connect();
    const auto lie = [&] {
        QDBusMessage signal = QDBusMessage::createSignal(
            QStringLiteral("/3_stand_in"), QStringLiteral("org.freedesktop.PackageKit.Transaction"),
            QStringLiteral("Finished"));
        signal << 1u << 1u;
        stranger.send(signal);
        // Once the bus answers a later message, it has passed the signal on.
        stranger.interface()->registeredServiceNames();
    };
    service->removal = {{}, 59, QStringLiteral("the truth"), 2, false, {}, lie};
    const RemovalResult result = remove(debian(app), approved);
    EXPECT_EQ(result.outcome, RemovalOutcome::Failed);
    EXPECT_EQ(result.text, QStringLiteral("the truth"));
}

TEST_F(PackageKitRemoval, MakesAPackageRemovableWithoutNativeTools)
{
    const QByteArray file = entry(QStringLiteral("app.desktop"), {});
    tools.drop(QStringLiteral("apt-get"));
    tools.answerSearch("app: " + file + '\n');
    tools.answerFacts({FakeTools::factsLine(app)});
    EXPECT_TRUE(owner(file).package->canBeRemoved);
    service->vanish();
    EXPECT_FALSE(owner(file).package->canBeRemoved);
    bus.addService(QStringLiteral("org.freedesktop.PackageKit"), QStringLiteral("/bin/false"));
    EXPECT_TRUE(owner(file).package->canBeRemoved);
}

} // namespace
} // namespace quillbay::platform
