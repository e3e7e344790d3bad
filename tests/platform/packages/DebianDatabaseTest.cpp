#include "platform/packages/ManagerFixture.h"

#include <QProcess>
#include <QStandardPaths>

namespace quillbay::platform {
namespace {

using ::testing::ElementsAre;

bool hasTool(const char *name)
{
    return !QStandardPaths::findExecutable(QLatin1String(name)).isEmpty();
}

/// What a program wrote; the test fails where it does not end well.
QByteArray run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        ADD_FAILURE() << qPrintable(program) << qPrintable(arguments.join(u' ')) << '\n'
                      << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

/// The database of the machine that the test runs on; only questions are asked.
TEST(RealDebianDatabase, KnowsItsFilesByEverySpelling)
{
    if (!hasTool("dpkg-query"))
        GTEST_SKIP() << "no dpkg here: the real database was NOT asked";
    PackageSurroundings surroundings = PackageSurroundings::ofSession();
    surroundings.systemBus = [] { return QDBusConnection(QStringLiteral("none")); };
    LinuxPackageManager manager(surroundings);
    const auto owner = [&](const QByteArray &file) {
        return testing::onWorker([&] { return manager.owner(file); });
    };

    const PackageOwner dpkg = owner("/usr/bin/dpkg");
    ASSERT_TRUE(dpkg.package) << qPrintable(dpkg.error);
    EXPECT_EQ(dpkg.package->displayText, QStringLiteral("dpkg, Debian package"));
    EXPECT_TRUE(dpkg.package->isEssential);
    // Packaged below /bin, and seen below both where the folders are merged.
    for (const char *path : {"/bin/ls", "/usr/bin/ls"}) {
        if (!QFile::exists(QLatin1String(path)))
            continue;
        const PackageOwner ls = owner(path);
        ASSERT_TRUE(ls.package) << path;
        EXPECT_EQ(ls.package->name, QStringLiteral("coreutils"));
    }
    const PackageOwner none = owner("/usr/bin/no [such] file*");
    EXPECT_FALSE(none.package);
    EXPECT_EQ(none.error, QString());
    // A pattern would match hundreds.
    EXPECT_FALSE(owner("/usr/bin/dpk?").package);

    // What this program runs on must not go.
    Package library = *dpkg.package;
    library.isEssential = false;
    library.canBeRemoved = true;
    const QByteArrayList own = surroundings.ownFiles();
    EXPECT_TRUE(std::any_of(own.begin(), own.end(),
                            [](const QByteArray &file) { return file.contains("libQt6Core"); }));
    const RemovalPreview preview =
        testing::onWorker([&] { return manager.simulateRemoval(library, PackageData::Keep); });
    EXPECT_NE(preview.verdict, RemovalPreview::Verdict::Allowed);
}

/// A package database and an installation of the test's own.
class PrivateDebian : public testing::ManagerFixture
{
protected:
    void SetUp() override
    {
        for (const char *name : {"dpkg", "dpkg-deb", "dpkg-query", "apt-get"}) {
            if (!hasTool(name))
                GTEST_SKIP() << "no " << name << " here: NO real package was removed";
        }
        if (::geteuid() != 0 && !hasTool("fakeroot"))
            GTEST_SKIP() << "neither root nor fakeroot: NO real package was removed";
        for (const char *folder :
             {"db/info", "db/updates", "db/triggers", "apt/lists/partial", "cache/archives/partial", "etc"})
            QDir().mkpath(path(QLatin1String(folder)));
        for (const char *file : {"db/status", "db/available", "apt.conf"})
            writeFile(path(QLatin1String(file)), {});
        const QByteArray home = tools.home();
        tools.script(QStringLiteral("dpkg-query"), QStringLiteral("--search"),
                     "exec dpkg-query --admindir=" + home + "/db \"$@\"\n");
        tools.script(QStringLiteral("dpkg-query"), QStringLiteral("--show"),
                     "exec dpkg-query --admindir=" + home + "/db \"$@\"\n");
        tools.script(QStringLiteral("dpkg"), QStringLiteral("--remove"), "exit 1\n");
        tools.script(QStringLiteral("apt-get"), QStringLiteral("--simulate"),
                     "exec apt-get -o Dir::State=" + home + "/apt -o Dir::State::status=" + home +
                         "/db/status -o Dir::Cache=" + home + "/cache -o Dir::Etc=" + home + "/etc \"$@\"\n");
    }

    QString path(const QString &relative) const { return QString::fromUtf8(tools.home()) + u'/' + relative; }

    static void writeFile(const QString &path, const QByteArray &content)
    {
        QDir().mkpath(path.section(u'/', 0, -2));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
    }

    /// The real program on the private database; what it installs lies below the home as well.
    QByteArray dpkg(const QStringList &arguments)
    {
        QStringList command = {
            QStringLiteral("dpkg"), QStringLiteral("--admindir=") + path(QStringLiteral("db")),
            QStringLiteral("--instdir=/"), QStringLiteral("--log=") + path(QStringLiteral("log")),
            QStringLiteral("--force-bad-path")};
        if (::geteuid() != 0)
            command.prepend(QStringLiteral("fakeroot"));
        command += arguments;
        return run(command.takeFirst(), command);
    }

    /// Makes and installs a package with one file; returns the file.
    QByteArray install(const QString &name, const QByteArray &fields)
    {
        const QString tree = path(QStringLiteral("build/") + name);
        const QString file = path(QStringLiteral("installed/%1.desktop").arg(name));
        writeFile(tree + file, "[Desktop Entry]\nType=Application\nName=Made\nExec=true\n");
        writeFile(tree + QStringLiteral("/DEBIAN/control"),
                  "Package: " + name.toUtf8() +
                      "\nVersion: 1.0\nArchitecture: all\nMaintainer: Test <test@example.org>\n" + fields +
                      "Description: made for a test\n");
        const QString archive = path(name + QStringLiteral(".deb"));
        run(QStringLiteral("dpkg-deb"),
            {QStringLiteral("--root-owner-group"), QStringLiteral("--build"), tree, archive});
        dpkg({QStringLiteral("--install"), archive});
        return QFile::encodeName(file);
    }
};

TEST_F(PrivateDebian, IsAskedAndARealPackageIsRemovedWithWhatNeedsIt)
{
    const QByteArray library = install(QStringLiteral("quillbay-made"), {});
    const QByteArray user = install(QStringLiteral("quillbay-made-user"), "Depends: quillbay-made\n");
    const QByteArray other = install(QStringLiteral("quillbay-made-other"), {});
    const QByteArray stray = entry(QStringLiteral("installed/stray.desktop"), {});
    ASSERT_TRUE(QFile::exists(QFile::decodeName(user)));

    EXPECT_FALSE(owner(stray).package);
    EXPECT_EQ(owner(stray).error, QString());
    const PackageOwner found = owner(library);
    ASSERT_TRUE(found.package) << qPrintable(found.error);
    EXPECT_EQ(found.package->displayText, QStringLiteral("quillbay-made, Debian package"));
    const RemovalPreview preview = simulate(*found.package);
    ASSERT_EQ(preview.verdict, RemovalPreview::Verdict::Allowed) << qPrintable(preview.reason);
    EXPECT_THAT(preview.packages,
                ElementsAre(QStringLiteral("quillbay-made"), QStringLiteral("quillbay-made-user")));
    EXPECT_TRUE(QFile::exists(QFile::decodeName(library)));

    PackageRemoval removal{*found.package, preview.packages, PackageData::Keep,
                           [this](const QStringList &command) {
                               EXPECT_EQ(command.value(0), tools.path(QStringLiteral("bin/dpkg")));
                               dpkg(command.mid(1));
                               return ElevatedResult{ElevatedOutcome::Done, {}};
                           }};
    const RemovalResult result =
        testing::onWorker([&] { return LinuxPackageManager(surroundings).remove(removal); });
    EXPECT_EQ(result.outcome, RemovalOutcome::Removed) << qPrintable(result.text);
    EXPECT_FALSE(QFile::exists(QFile::decodeName(library)));
    EXPECT_FALSE(QFile::exists(QFile::decodeName(user)));
    EXPECT_TRUE(QFile::exists(QFile::decodeName(other)));
    EXPECT_TRUE(QFile::exists(QFile::decodeName(stray)));
    EXPECT_FALSE(owner(library).package);
}

TEST_F(PrivateDebian, RefusesARealEssentialPackageAndWhatTakesItAlong)
{
    const QByteArray library = install(QStringLiteral("quillbay-made"), {});
    const QByteArray needed =
        install(QStringLiteral("quillbay-made-core"), "Depends: quillbay-made\nPriority: required\n");
    EXPECT_TRUE(owner(needed).package->isEssential);
    const PackageOwner found = owner(library);
    ASSERT_TRUE(found.package);
    EXPECT_FALSE(found.package->isEssential);
    const RemovalPreview preview = simulate(*found.package);
    EXPECT_EQ(preview.verdict, RemovalPreview::Verdict::Refused);
    EXPECT_EQ(remove(*found.package, preview.packages).outcome, RemovalOutcome::Refused);
    EXPECT_TRUE(elevated.isEmpty());
}

} // namespace
} // namespace quillbay::platform
