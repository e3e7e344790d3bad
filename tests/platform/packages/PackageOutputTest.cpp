#include "platform/linux/packages/DebianOutput.h"
#include "platform/linux/packages/RpmOutput.h"

#include <random>

#include <gmock/gmock.h>

namespace quillbay::platform {

void PrintTo(const PackageFacts &facts, std::ostream *out)
{
    *out << qPrintable(facts.id) << (facts.isEssential ? " essential" : "");
}

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

DebianOwners ownersIn(const QByteArray &output, const QByteArray &path)
{
    return debianOwners(output, {path});
}

TEST(DebianSearch, TakesOnlyLinesAboutTheVeryFile)
{
    const QByteArray output = "geany: /usr/share/applications/geany.desktop\n"
                              "geany-common: /usr/share/applications/geany.desktop.d\n"
                              "libfoo:amd64, libfoo:i386: /usr/share/foo\n"
                              "odd: /usr/share/a: /b\n"
                              "-x, Bad Name: /usr/share/bad\n"
                              "no line at all\n: /usr/share/none\n";
    EXPECT_THAT(ownersIn(output, "/usr/share/applications/geany.desktop").names,
                ElementsAre(QStringLiteral("geany")));
    EXPECT_THAT(ownersIn(output, "/usr/share/foo").names,
                ElementsAre(QStringLiteral("libfoo:amd64"), QStringLiteral("libfoo:i386")));
    EXPECT_THAT(ownersIn(output, "/usr/share/a: /b").names, ElementsAre(QStringLiteral("odd")));
    for (const char *path : {"/usr/share/applications", "/usr/share/bad", "/usr/share/none", "/b"})
        EXPECT_THAT(ownersIn(output, path).names, IsEmpty()) << path;
}

TEST(DebianSearch, OfADivertedFileItsDiverterIsTheOwner)
{
    // The real form: what is moved away, where to, and whose the name is.
    const QByteArray output = "diversion by firefox-esr from: /usr/bin/firefox\n"
                              "diversion by firefox-esr to: /usr/bin/firefox.real\n"
                              "firefox, firefox-esr: /usr/bin/firefox\n";
    EXPECT_THAT(ownersIn(output, "/usr/bin/firefox").names, ElementsAre(QStringLiteral("firefox-esr")));
    EXPECT_FALSE(ownersIn(output, "/usr/bin/firefox").isDiverted);
    EXPECT_THAT(ownersIn(output, "/usr/bin/firefox.real").names, IsEmpty());
    EXPECT_TRUE(ownersIn(output, "/usr/bin/firefox.real").isDiverted);

    const QByteArray local =
        "local diversion from: /usr/bin/x\nlocal diversion to: /usr/bin/x.distrib\nx: /usr/bin/x\n";
    EXPECT_THAT(ownersIn(local, "/usr/bin/x").names, IsEmpty());
    EXPECT_TRUE(ownersIn(local, "/usr/bin/x.distrib").isDiverted);
}

TEST(DebianSearch, AsksForPatternCharactersAsThemselves)
{
    EXPECT_EQ(debianSearchPattern("/a/b[c]*?\\.desktop"), "/a/b\\[c\\]\\*\\?\\\\.desktop");
    EXPECT_EQ(debianSearchPattern("/caf\xc3\xa9"), "/caf\xc3\xa9");
    EXPECT_EQ(debianSearchPattern("/caf\xe9*"), "/caf?\\*");
}

TEST(DebianFacts, KnowWhatTheSystemNeeds)
{
    const QByteArray output = "bash\tbash\tinstalled\tyes\tno\trequired\t7164\t\n"
                              "grub\tgrub\tinstalled\tno\tyes\toptional\t\t\n"
                              "less\tless\tinstalled\tno\tno\timportant\t-3\tpager\n"
                              "gone\tgone\tconfig-files\tno\tno\toptional\t1\t\n"
                              "half\thalf\thalf-installed\tno\tno\toptional\tmuch\t\n"
                              "box\tbox:amd64\tinstalled\tno\t\toptional\t2\tx-wm (= 1), y:any\n";
    const PackageAnswer<QList<PackageFacts>> facts = debianFacts(output);
    ASSERT_TRUE(facts) << qPrintable(facts.error);
    const auto fact = [](const char *name, const char *id, bool essential, const QStringList &provides,
                         qint64 kibibytes = 0) {
        return PackageFacts{QLatin1String(name), QLatin1String(id), essential, provides, kibibytes * 1024};
    };
    EXPECT_THAT(
        facts.value,
        ElementsAre(fact("bash", "bash", true, {}, 7164), fact("grub", "grub", true, {}),
                    fact("less", "less", true, {QStringLiteral("pager")}), fact("half", "half", false, {}),
                    fact("box", "box:amd64", false, {QStringLiteral("x-wm"), QStringLiteral("y")}, 2)));
    for (const char *bad :
         {"bash\tbash\tinstalled\tyes\tno\n", "-o\t-o\tinstalled\tno\tno\toptional\t1\t\n", "\n x"})
        EXPECT_FALSE(debianFacts(bad)) << bad;
}

TEST(DebianSimulation, IsTheListOfWhatGoes)
{
    const PackageAnswer<QStringList> plain =
        debianSimulation("Reading package lists...\nThe following packages will be REMOVED:\n  foo libbar\n"
                         "Remv foo [1.0] [libbar:amd64 ]\nRemv libbar:i386 [2]\nPurg baz [3]\n");
    EXPECT_TRUE(plain);
    EXPECT_THAT(plain.value,
                ElementsAre(QStringLiteral("foo"), QStringLiteral("libbar:i386"), QStringLiteral("baz")));
    EXPECT_FALSE(debianSimulation("Remv foo [1]\nInst bar (2 Debian)\nConf bar (2 Debian)\n"));
    EXPECT_FALSE(debianSimulation("Remv --force [1]\n"));
    EXPECT_FALSE(debianSimulation("Remv "));
    EXPECT_THAT(debianSimulation("nothing to do\n").value, IsEmpty());
}

TEST(RpmOutput, TellsNotOwnedFromNotAnswered)
{
    EXPECT_THAT(rpmRecords("file /bin/ls is not owned by any package\n"), IsEmpty());
    const QList<RpmRecord> records =
        rpmRecords("foo\t1.0-2\tnoarch\t5000000000\nfoo\t1.0-2\tnoarch\t5000000000\n-e\t1-1\tnoarch\t1\n");
    EXPECT_THAT(records, ElementsAre(RpmRecord{QStringLiteral("foo"), QStringLiteral("foo-1.0-2.noarch"),
                                               QStringLiteral("foo"), 5'000'000'000}));
    EXPECT_TRUE(hasRpmError("error: cannot open Packages database in /var/lib/rpm\n"));
    EXPECT_TRUE(hasRpmError("rpm: a note\nerror: no\n"));
    EXPECT_FALSE(hasRpmError("rpm: RPM should not be used directly\n"));
}

TEST(RpmOutput, NamesWhatIsInTheWay)
{
    const PackageAnswer<QStringList> found =
        rpmDependents("error: Failed dependencies:\n\tliba is needed by (installed) appb-1.0-2.noarch\n"
                      "\tlibx.so()(64bit) is needed by (installed) appc-1:2-1.x86_64\n"
                      "\tliba >= 1 is needed by (installed) appb-1.0-2.noarch\n");
    EXPECT_TRUE(found);
    EXPECT_THAT(found.value,
                ElementsAre(QStringLiteral("appb-1.0-2.noarch"), QStringLiteral("appc-1:2-1.x86_64")));
    for (const char *bad : {"", "error: package foo is not installed\n",
                            "error: Failed dependencies:\n\ta is needed by (installed) --nodeps\n",
                            "error: Failed dependencies:\nerror: can't create transaction lock\n"})
        EXPECT_FALSE(rpmDependents(bad)) << bad;
}

TEST(PackageOutput, OfAnyBytesYieldsValidNamesOnly)
{
    const QByteArrayList pieces = {"Remv ",
                                   "Inst ",
                                   "diversion by ",
                                   " from",
                                   "local diversion to",
                                   ": /",
                                   ", ",
                                   "\t",
                                   "\n",
                                   "foo",
                                   "-x",
                                   "installed",
                                   "yes",
                                   "\xff",
                                   "[1]",
                                   "error: Failed dependencies:\n\t",
                                   " is needed by (installed) ",
                                   "foo-1-1.noarch"};
    std::mt19937 random(7);
    std::uniform_int_distribution<qsizetype> pick(0, pieces.size() - 1);
    const auto isClean = [](const QString &name) { return !name.isEmpty() && !name.startsWith(u'-'); };
    for (int i = 0; i < 5000; ++i) {
        QByteArray output;
        for (int count = i % 24; count > 0; --count)
            output += pieces[pick(random)];
        for (const QString &name : debianOwners(output, {"/foo", "/"}).names)
            ASSERT_TRUE(isClean(name)) << output.constData();
        for (const QString &name : debianSimulation(output).value)
            ASSERT_TRUE(isClean(name)) << output.constData();
        for (const PackageFacts &facts : debianFacts(output).value)
            ASSERT_TRUE(isClean(facts.id)) << output.constData();
        for (const RpmRecord &record : rpmRecords(output))
            ASSERT_TRUE(isClean(record.id)) << output.constData();
        for (const QString &name : rpmDependents(output).value)
            ASSERT_TRUE(isClean(name)) << output.constData();
    }
}

} // namespace
} // namespace quillbay::platform
