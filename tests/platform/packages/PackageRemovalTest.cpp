#include "platform/packages/ManagerFixture.h"

#include <functional>
#include <random>

namespace quillbay::platform {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using testing::FakeTools;
using ::testing::IsEmpty;
using Verdict = RemovalPreview::Verdict;

const QString app = QStringLiteral("app");
const QString plugin = QStringLiteral("plugin");
const QString aptGet = QStringLiteral("apt-get");
const QString simulation = QStringLiteral("--simulate");

class Removal : public testing::ManagerFixture
{
protected:
    void expectNothingDone(const char *what)
    {
        EXPECT_THAT(elevated, IsEmpty()) << what;
        EXPECT_THAT(removingCalls(), IsEmpty()) << what;
    }

    void makeFlatpak(const QByteArray &reference = "app/org.foo.Bar/x86_64/stable\n")
    {
        tools.answer(QStringLiteral("flatpak"), QStringLiteral("info"), {reference, {}, 0});
    }
    Package flatpak() const
    {
        return package(PackageKind::Flatpak, QStringLiteral("org.foo.Bar"),
                       QStringLiteral("app/org.foo.Bar/x86_64/stable"));
    }
    void makeSnap(const QByteArray &notes = "-")
    {
        tools.answer(QStringLiteral("snap"), QStringLiteral("list"),
                     {"Name Version Rev Tracking Publisher Notes\nfoo 1 2 stable me " + notes + '\n', {}, 0});
    }
    Package snap() const { return package(PackageKind::Snap, QStringLiteral("foo"), QStringLiteral("foo")); }
};

TEST_F(Removal, OfADebianPackageIsSimulatedThenRunElevatedForExactlyWhatWasApproved)
{
    makeDebianSystem({plugin, QStringLiteral("another")});
    const RemovalPreview preview = simulate(debian(app));
    EXPECT_EQ(preview.verdict, Verdict::Allowed) << qPrintable(preview.reason);
    EXPECT_THAT(preview.packages, ElementsAre(app, QStringLiteral("another"), plugin));
    expectNothingDone("a simulation");

    const RemovalResult result = remove(debian(app), {plugin, QStringLiteral("another"), app});
    EXPECT_EQ(result.outcome, RemovalOutcome::Removed) << qPrintable(result.text);
    EXPECT_THAT(elevated,
                ElementsAre(QStringList{tools.path(QStringLiteral("bin/dpkg")), QStringLiteral("--remove"),
                                        QStringLiteral("--"), app, plugin, QStringLiteral("another")}));
    EXPECT_THAT(removingCalls(), IsEmpty());
    // No part of it asks for packages that are merely no longer needed, or purges.
    for (const QString &call : tools.calls())
        EXPECT_FALSE(call.contains(QStringLiteral("purge")) || call.contains(QStringLiteral("autoremove|")));
}

TEST_F(Removal, NeverHappensUnlessItIsAllowedAndApprovedAsItIsNow)
{
    struct Case
    {
        const char *what;
        std::function<void()> prepare;
        QStringList approved;
        RemovalOutcome outcome;
    };
    const QString show = QStringLiteral("--show");
    const QString query = QStringLiteral("dpkg-query");
    const auto factsOf = [this](const QString &flags) {
        tools.answerFacts({FakeTools::factsLine(app), FakeTools::factsLine(plugin, flags)});
    };
    const QStringList both = {app, plugin};
    const std::vector<Case> cases = {
        {"more would go", [] {}, {app}, RemovalOutcome::Changed},
        {"less would go", [] {}, {app, plugin, QStringLiteral("third")}, RemovalOutcome::Changed},
        {"another would go", [] {}, {app, QStringLiteral("plugin2")}, RemovalOutcome::Changed},
        {"nothing was approved", [] {}, {}, RemovalOutcome::Changed},
        {"one is essential", [&] { factsOf(QStringLiteral("yes|no|optional")); }, both,
         RemovalOutcome::Refused},
        {"one is protected", [&] { factsOf(QStringLiteral("no|yes|optional")); }, both,
         RemovalOutcome::Refused},
        {"one is required", [&] { factsOf(QStringLiteral("no|no|required")); }, both,
         RemovalOutcome::Refused},
        {"one is important", [&] { factsOf(QStringLiteral("no|no|important")); }, both,
         RemovalOutcome::Refused},
        {"one is a display manager",
         [&] {
             tools.answerFacts(
                 {FakeTools::factsLine(app), FakeTools::factsLine(plugin, QStringLiteral("no|no|optional"),
                                                                  QStringLiteral("x-display-manager"))});
         },
         both, RemovalOutcome::Refused},
        {"this program runs on one",
         [&] {
             surroundings.ownFiles = [] { return QByteArrayList{"/usr/lib/libplug.so.1"}; };
             tools.answerSearch("plugin: /lib/libplug.so.1\n");
         },
         both, RemovalOutcome::Refused},
        {"it cannot be said what this program runs on",
         [&] {
             surroundings.ownFiles = [] { return QByteArrayList{"/usr/lib/libplug.so.1"}; };
             tools.answer(query, QStringLiteral("--search"), {{}, "broken", 2});
         },
         both, RemovalOutcome::Failed},
        {"the facts are not told",
         [&] {
             tools.answer(query, show, {{}, "broken", 2});
         },
         both, RemovalOutcome::Failed},
        {"the facts are cut short", [&] { tools.answerFacts({FakeTools::factsLine(app)}); }, both,
         RemovalOutcome::Failed},
        {"the simulation fails",
         [&] {
             tools.answer(aptGet, simulation, {"Remv app [1]\n", "E: no", 100});
         },
         {app},
         RemovalOutcome::Failed},
        {"the simulation is about another",
         [&] {
             tools.answer(aptGet, simulation, {"Remv plugin [1]\n", {}, 0});
         },
         {plugin},
         RemovalOutcome::Failed},
        {"the simulation is empty",
         [&] {
             tools.answer(aptGet, simulation, {{}, {}, 0});
         },
         {},
         RemovalOutcome::Failed},
        {"the simulation would install",
         [&] {
             tools.answer(aptGet, simulation, {"Remv app [1]\nInst new (1)\n", {}, 0});
         },
         {app},
         RemovalOutcome::Failed},
        {"the simulation names what is no name",
         [&] {
             tools.answer(aptGet, simulation, {"Remv app [1]\nRemv --force-all [1]\n", {}, 0});
         },
         {app},
         RemovalOutcome::Failed},
        {"the simulation has no end",
         [&] { tools.script(aptGet, simulation, "exec yes 'Remv app [1]'\n"); },
         {app},
         RemovalOutcome::Failed},
        {"the simulation hangs",
         [&] {
             tools.script(aptGet, simulation, "echo 'Remv app [1]'; echo 'Remv plugin [1]'; sleep 600\n");
             surroundings.simulationLimit = 200ms;
         },
         both, RemovalOutcome::Failed},
        {"there is nothing to simulate with", [&] { tools.drop(aptGet); }, both, RemovalOutcome::Failed},
        {"there is nothing to elevate with", [&] { isElevationThere = false; }, both,
         RemovalOutcome::NotAuthorised},
    };
    for (const Case &one : cases) {
        makeDebianSystem({plugin});
        surroundings = tools.surroundings();
        isElevationThere = true;
        one.prepare();
        const RemovalResult result = remove(debian(app), one.approved);
        EXPECT_EQ(result.outcome, one.outcome) << one.what << ": " << qPrintable(result.text);
        EXPECT_FALSE(result.text.isEmpty()) << one.what;
        expectNothingDone(one.what);
    }
}

TEST_F(Removal, OfWhatIsNoSoundPackageReachesNoProgram)
{
    makeDebianSystem();
    makeFlatpak();
    makeSnap();
    tools.answer(QStringLiteral("rpm"), QStringLiteral("--query"), {{}, {}, 0});
    std::vector<Package> packages;
    for (const char *name :
         {"--force-all", "-y", "app libc6", "app\nlibc6", "*", "$(x)", "", "app;x", "../app"}) {
        const QString text = QLatin1String(name);
        for (const PackageKind kind :
             {PackageKind::Debian, PackageKind::Rpm, PackageKind::Flatpak, PackageKind::Snap}) {
            packages.push_back(package(kind, app, text));
            packages.push_back(package(kind, text, text));
        }
        packages.push_back(
            package(PackageKind::Flatpak, QStringLiteral("org.foo.Bar"), QStringLiteral("app/") + text));
    }
    Package unaskable = debian(app);
    unaskable.canBeRemoved = false;
    packages.push_back(unaskable);
    for (const Package &one : packages) {
        EXPECT_EQ(simulate(one).verdict, Verdict::Unknown) << qPrintable(one.id);
        EXPECT_EQ(remove(one, {one.name}).outcome, RemovalOutcome::Failed) << qPrintable(one.id);
    }
    EXPECT_THAT(tools.calls(), IsEmpty());
    EXPECT_THAT(elevated, IsEmpty());
}

TEST_F(Removal, OfRandomListsHappensForEqualListsAlone)
{
    std::mt19937 random(42);
    const QStringList names = {QStringLiteral("aa"), QStringLiteral("bb"), QStringLiteral("cc")};
    const auto pick = [&] {
        QStringList chosen;
        for (const QString &name : names) {
            if (random() % 2)
                chosen.append(name);
        }
        std::shuffle(chosen.begin(), chosen.end(), random);
        return chosen;
    };
    int removed = 0;
    for (int i = 0; i < 60; ++i) {
        const QStringList going = pick();
        const QStringList approved = QStringList{app} + pick();
        makeDebianSystem(going);
        elevated.clear();
        const RemovalResult result = remove(debian(app), approved);
        const bool isSame = QSet<QString>(approved.begin(), approved.end()) ==
                            QSet<QString>(going.begin(), going.end()) + QSet<QString>{app};
        ASSERT_EQ(result.outcome, isSame ? RemovalOutcome::Removed : RemovalOutcome::Changed);
        ASSERT_EQ(elevated.size(), isSame ? 1 : 0);
        removed += isSame;
    }
    EXPECT_GT(removed, 0);
}

TEST_F(Removal, TellsWhyTheElevatedCommandDidNotWork)
{
    makeDebianSystem();
    const QString text = QStringLiteral("words");
    for (const auto &[given, expected] :
         {std::pair(ElevatedOutcome::Declined, RemovalOutcome::Declined),
          std::pair(ElevatedOutcome::NotAuthorised, RemovalOutcome::NotAuthorised),
          std::pair(ElevatedOutcome::Failed, RemovalOutcome::Failed)}) {
        elevation = {given, text};
        const RemovalResult result = remove(debian(app), {app});
        EXPECT_EQ(result.outcome, expected);
        EXPECT_EQ(result.text, text);
    }
}

TEST_F(Removal, OfAnRpmPackageTakesAllThatNeedsIt)
{
    const QString rpm = QStringLiteral("rpm");
    tools.script(rpm, QStringLiteral("--query"),
                 "shift 4\nfor id; do printf '%s\\t1.0-2\\tnoarch\\t1\\n' \"${id%%-*}\"; done\n");
    tools.script(
        rpm, QStringLiteral("--erase"),
        "case $* in\n*appc*) exit 0;;\n*appb*) need='appb is needed by (installed) appc-1.0-2.noarch';;\n"
        "*) need='liba is needed by (installed) appb-1.0-2.noarch';;\nesac\n"
        "printf 'error: Failed dependencies:\\n\\t%s\\n' \"$need\" >&2\nexit 1\n");
    const Package library =
        package(PackageKind::Rpm, QStringLiteral("liba"), QStringLiteral("liba-1.0-2.noarch"));
    const RemovalPreview preview = simulate(library);
    EXPECT_EQ(preview.verdict, Verdict::Allowed) << qPrintable(preview.reason);
    EXPECT_THAT(preview.packages,
                ElementsAre(QStringLiteral("liba"), QStringLiteral("appb"), QStringLiteral("appc")));
    EXPECT_EQ(remove(library, preview.packages).outcome, RemovalOutcome::Removed);
    EXPECT_THAT(elevated, ElementsAre(QStringList{
                              tools.path(QStringLiteral("bin/rpm")), QStringLiteral("--erase"),
                              QStringLiteral("--"), QStringLiteral("liba-1.0-2.noarch"),
                              QStringLiteral("appb-1.0-2.noarch"), QStringLiteral("appc-1.0-2.noarch")}));
    EXPECT_THAT(removingCalls(), IsEmpty());

    // One that never agrees, and one that complains of what it was already told.
    elevated.clear();
    tools.script(rpm, QStringLiteral("--erase"),
                 "printf 'error: Failed dependencies:\\n\\tx is needed by (installed) n%s-1-1.noarch\\n' $# "
                 ">&2; exit 1\n");
    EXPECT_EQ(simulate(library).verdict, Verdict::Unknown);
    tools.script(rpm, QStringLiteral("--erase"),
                 "printf 'error: Failed dependencies:\\n\\tx is needed by (installed) liba-1.0-2.noarch\\n' "
                 ">&2; exit 1\n");
    EXPECT_EQ(remove(library, {QStringLiteral("liba")}).outcome, RemovalOutcome::Failed);
    EXPECT_THAT(elevated, IsEmpty());
}

TEST_F(Removal, OfAFlatpakApplicationKeepsItsDataUnlessTold)
{
    makeFlatpak();
    const QString uninstall = QStringLiteral("uninstall");
    tools.answer(QStringLiteral("flatpak"), uninstall, {});
    Package one = flatpak();
    EXPECT_THAT(simulate(one).packages, ElementsAre(one.name));
    EXPECT_EQ(simulate(one).data, QString());
    EXPECT_EQ(simulate(one, PackageData::Remove).data, QStringLiteral("~/.var/app/org.foo.Bar"));
    expectNothingDone("a simulation");

    EXPECT_EQ(remove(one, {one.name}).outcome, RemovalOutcome::Removed);
    one.isForOneUser = true;
    EXPECT_EQ(remove(one, {one.name}, PackageData::Remove).outcome, RemovalOutcome::Removed);
    EXPECT_THAT(removingCalls(),
                ElementsAre(QStringLiteral("flatpak|uninstall|--system|-y|app/org.foo.Bar/x86_64/stable"),
                            QStringLiteral(
                                "flatpak|uninstall|--user|-y|--delete-data|app/org.foo.Bar/x86_64/stable")));
    EXPECT_THAT(elevated, IsEmpty());

    tools.answer(QStringLiteral("flatpak"), uninstall,
                 {{}, "error: Flatpak system operation Uninstall not allowed for user\n", 1});
    EXPECT_EQ(remove(one, {one.name}).outcome, RemovalOutcome::NotAuthorised);
    tools.answer(QStringLiteral("flatpak"), uninstall, {{}, "error: disk full\n", 1});
    EXPECT_EQ(remove(one, {one.name}).text, QStringLiteral("error: disk full"));

    tools.forgetCalls();
    EXPECT_EQ(remove(one, {QStringLiteral("org.foo.Other")}).outcome, RemovalOutcome::Changed);
    makeFlatpak("app/org.foo.Bar/x86_64/beta\n");
    EXPECT_EQ(remove(one, {one.name}).outcome, RemovalOutcome::Failed);
    expectNothingDone("another branch");
}

TEST_F(Removal, OfASnapIsElevatedWhereSnapIsRefused)
{
    makeSnap();
    const QString verb = QStringLiteral("remove");
    const QString tool = QStringLiteral("snap");
    tools.answer(tool, verb, {});
    EXPECT_EQ(remove(snap(), {snap().name}).outcome, RemovalOutcome::Removed);
    EXPECT_EQ(remove(snap(), {snap().name}, PackageData::Remove).outcome, RemovalOutcome::Removed);
    EXPECT_THAT(removingCalls(),
                ElementsAre(QStringLiteral("snap|remove|foo"), QStringLiteral("snap|remove|--purge|foo")));
    EXPECT_THAT(elevated, IsEmpty());

    tools.answer(tool, verb, {{}, "error: access denied (try with sudo)\n", 1});
    EXPECT_EQ(remove(snap(), {snap().name}).outcome, RemovalOutcome::Removed);
    EXPECT_THAT(elevated, ElementsAre(QStringList{tools.path(QStringLiteral("bin/snap")), verb,
                                                  QStringLiteral("foo")}));
    isElevationThere = false;
    EXPECT_EQ(remove(snap(), {snap().name}).outcome, RemovalOutcome::NotAuthorised);
    isElevationThere = true;

    elevated.clear();
    tools.answer(tool, verb, {{}, "error: snap \"foo\" has running apps\n", 10});
    EXPECT_EQ(remove(snap(), {snap().name}).outcome, RemovalOutcome::Failed);
    tools.script(tool, verb, "sleep 600\n");
    surroundings.removalLimit = 200ms;
    EXPECT_EQ(remove(snap(), {snap().name}).outcome, RemovalOutcome::Failed);
    EXPECT_THAT(elevated, IsEmpty());

    tools.forgetCalls();
    makeSnap("snapd");
    EXPECT_EQ(remove(snap(), {snap().name}).outcome, RemovalOutcome::Refused);
    expectNothingDone("a snap of the system");
}

TEST_F(Removal, AnswersTellWhetherAnApplicationIsTheSystems)
{
    makeDebianSystem({plugin});
    Package one = debian(app);
    EXPECT_FALSE(isSystemPackage(one, simulate(one)));
    tools.answerFacts(
        {FakeTools::factsLine(app), FakeTools::factsLine(plugin, QStringLiteral("yes|no|optional"))});
    EXPECT_TRUE(isSystemPackage(one, simulate(one)));
    one.isEssential = true;
    EXPECT_TRUE(isSystemPackage(one, {}));
    // What its manager calls essential needs no simulation, which would take seconds.
    makeDebianSystem();
    tools.forgetCalls();
    EXPECT_EQ(remove(one, {app}).outcome, RemovalOutcome::Refused);
    EXPECT_THAT(elevated, IsEmpty());
    EXPECT_THAT(tools.calls(), IsEmpty());
}

} // namespace
} // namespace quillbay::platform
