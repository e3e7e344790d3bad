#include "platform/linux/applications/LinuxApplicationSource.h"
#include "support/TestHome.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <map>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <unistd.h>

namespace quillbay::platform {
namespace {

using Names = std::map<std::string, std::string>; // of desktop file ids

/// An entry of which GIO answers otherwise than the desktop entry specification, or otherwise than we
/// decided.
struct Quirk
{
    const char *id;
    const char *expected; ///< Our answer; null where we do not list it.
};

class GioComparisonTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        writeShownRules();
        writeTexts();
        writeFolders();
    }

    void entry(const char *path, const QByteArray &lines,
               const QByteArray &head = "Type=Application\nName=Plain\nExec=true\n")
    {
        m_home.write(QStringLiteral("data/") + QString::fromLatin1(path), "[Desktop Entry]\n" + head + lines);
    }

    void writeShownRules()
    {
        entry("home/applications/plain.desktop", "");
        entry("home/applications/hidden.desktop", "Hidden=true\n");
        entry("home/applications/no-display.desktop", "NoDisplay=true\n");
        entry("home/applications/no-display-number.desktop", "NoDisplay=1\n");
        entry("home/applications/no-display-blank.desktop", "NoDisplay= true \n");
        entry("home/applications/no-display-other.desktop", "NoDisplay=yes\nHidden=TRUE\n");
        entry("home/applications/link.desktop", "", "Type=Link\nName=Link\nURL=https://localhost/\n");
        entry("home/applications/no-type.desktop", "", "Name=No type\nExec=true\n");
        entry("home/applications/no-name.desktop", "", "Type=Application\nExec=true\n");
        entry("home/applications/no-exec.desktop", "", "Type=Application\nName=No exec\n");
        entry("home/applications/dbus.desktop", "DBusActivatable=true\n", "Type=Application\nName=By bus\n");
        entry("home/applications/exec-missing.desktop", "",
              "Type=Application\nName=Gone\nExec=no-such-program\n");
        entry("home/applications/try-found.desktop", "TryExec=true\n");
        entry("home/applications/try-absolute.desktop", "TryExec=/bin/sh\n");
        entry("home/applications/try-missing.desktop", "TryExec=no-such-program\n");
        entry("home/applications/try-folder.desktop", "TryExec=/\n");
        entry("home/applications/try-no-program.desktop", "TryExec=/etc/passwd\n");
        entry("home/applications/only-a.desktop", "OnlyShowIn=A;\n");
        entry("home/applications/only-ab.desktop", "OnlyShowIn=A;B\n");
        entry("home/applications/only-none.desktop", "OnlyShowIn=\n");
        entry("home/applications/not-a.desktop", "NotShowIn=A;\n");
        entry("home/applications/only-b-not-a.desktop", "OnlyShowIn=B;\nNotShowIn=A;\n");
        entry("home/applications/only-lower.desktop", "OnlyShowIn=a;\n");
    }

    void writeTexts()
    {
        entry("home/applications/locales.desktop", "Name[de]=Deutsch\nName[de_AT]=Oesterreich\nName[sr]="
                                                   "Serbisch\nName[sr@latin]=Srpski\nName[pt_BR]=Brasil\n"
                                                   "GenericName[de]=Nie\n");
        entry("home/applications/locale-before.desktop", "",
              "Type=Application\nName[de]=Zuerst\nName=Last\nExec=true\n");
        entry("home/applications/locale-invalid.desktop", "Name[de]=\xff\xfe\n");
        entry("home/applications/escapes.desktop", "", "Type=Application\nName=a\\sb\\\\c\\td\nExec=true\n");
        entry("home/applications/duplicate.desktop", "Name=Second\n");
        entry("home/applications/crlf.desktop", "", "Type=Application\r\nName=CR LF\r\nExec=true\r\n");
        entry("home/applications/blanks.desktop", "",
              "Type = Application\n  Name =  Blanks \n\n# comment\nExec= true\n");
        entry("home/applications/unfinished.desktop", "", "Type=Application\nExec=true\nName=No line end");
        entry("home/applications/actions.desktop",
              "\n[Desktop Action new]\nName=Action\nExec=false\nNoDisplay=true\n");
        entry("home/applications/not-utf8.desktop", "", "Type=Application\nName=\xff\xfe\nExec=true\n");
        entry("home/applications/garbage-line.desktop", "this is no assignment\n");
        m_home.write(QStringLiteral("data/home/applications/bom.desktop"),
                     "\xEF\xBB\xBF[Desktop Entry]\nType=Application\nName=Mark\nExec=true\n");
        m_home.write(QStringLiteral("data/home/applications/comment-first.desktop"),
                     "# comment\n\n[Desktop Entry]\nType=Application\nName=Commented\nExec=true\n");
        m_home.write(QStringLiteral("data/home/applications/other-group.desktop"),
                     "[Other]\nName=x\n[Desktop Entry]\nType=Application\nName=Second group\nExec=true\n");
        m_home.write(QStringLiteral("data/home/applications/utf16.desktop"),
                     QByteArray("[\0D\0e\0s\0k\0t\0o\0p\0", 16));
        m_home.write(QStringLiteral("data/home/applications/folder.desktop/inside.txt"), "");
        m_home.write(QStringLiteral("data/home/applications/empty.desktop"), "");
        m_home.write(QStringLiteral("data/home/applications/binary.desktop"), QByteArray(5000, '\0'));
        m_home.write(QStringLiteral("data/home/applications/not-an-entry.txt"),
                     "[Desktop Entry]\nType=Application\n");
    }

    void writeFolders()
    {
        entry("home/applications/vendor/deep/app.desktop", "Name=Nested\n");
        entry("one/applications/vendor-deep-app.desktop", "Name=Shadowed\n");
        entry("one/applications/plain.desktop", "Name=Shadowed\n");
        entry("one/applications/hidden.desktop", "Name=Deleted by the user\n");
        entry("one/applications/empty.desktop", "Name=Shadowed by an empty file\n");
        entry("one/applications/masked.desktop", "Name=Masked\n");
        entry("one/applications/one.desktop", "Name=One\n");
        entry("two/applications/one.desktop", "Name=Two\n");
        entry("two/applications/two.desktop", "Name=Two\n");
        const QString home = m_home.path(QStringLiteral("data/home/applications/"));
        ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), home + QStringLiteral("masked.desktop")));
        ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"), home + QStringLiteral("dangling.desktop")));
        ASSERT_TRUE(QFile::link(QStringLiteral("plain.desktop"), home + QStringLiteral("linked.desktop")));
        ASSERT_TRUE(
            QFile::link(m_home.path(QStringLiteral("data/two")), home + QStringLiteral("linked-folder")));
    }

    QProcessEnvironment environment(const char *locales, const char *desktop) const
    {
        QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
        result.insert(QStringLiteral("XDG_DATA_HOME"), m_home.path(QStringLiteral("data/home")));
        result.insert(QStringLiteral("XDG_DATA_DIRS"), m_home.path(QStringLiteral("data/one")) + u':' +
                                                           m_home.path(QStringLiteral("data/two")));
        result.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QString::fromLatin1(desktop));
        // "LANGUAGE|LANG"
        const QStringList variables = QString::fromLatin1(locales).split(u'|');
        result.insert(QStringLiteral("LANGUAGE"), variables[0]);
        result.insert(QStringLiteral("LANG"), variables[1]);
        return result;
    }

    Names namesByGio(const QProcessEnvironment &environment)
    {
        QProcess child;
        child.setProcessEnvironment(environment);
        child.start(QStringLiteral(QUILLBAY_TEST_PYTHON),
                    {QStringLiteral(QUILLBAY_TEST_SOURCE "/list_with_gio.py")});
        EXPECT_TRUE(child.waitForFinished(60000) && child.exitCode() == 0)
            << child.readAllStandardError().toStdString();
        Names result;
        const QJsonObject names = QJsonDocument::fromJson(child.readAllStandardOutput()).object();
        for (auto it = names.begin(); it != names.end(); ++it)
            result[it.key().toStdString()] = it.value().toString().toStdString();
        return result;
    }

    Names namesByUs(const QProcessEnvironment &process)
    {
        const auto variable = [&](const char *name) { return process.value(QString::fromLatin1(name)); };
        ApplicationEnvironment environment;
        environment.home = m_home.path();
        environment.dataHome = variable("XDG_DATA_HOME");
        environment.dataDirs = variable("XDG_DATA_DIRS").split(u':');
        for (const QString &desktop : variable("XDG_CURRENT_DESKTOP").split(u':'))
            environment.currentDesktop.push_back(desktop.toStdString());
        environment.locales =
            localeCandidates(variable("LANGUAGE").toStdString(), {}, {}, variable("LANG").toStdString());
        for (const QString &folder : variable("PATH").split(u':'))
            environment.path.push_back(folder.toStdString());
        const LinuxApplicationSource source(environment);
        Names result;
        for (const InstalledApplication &application : source.scan()) {
            const auto details = source.read(application.path);
            EXPECT_TRUE(details && details->name == application.name) << application.path.toStdString();
            result[details->identifier.toStdString() + ".desktop"] = application.name.toStdString();
        }
        return result;
    }

    testing::TestHome m_home;
};

TEST_F(GioComparisonTest, ListsWhatGioLists)
{
    const Quirk quirks[] = {
        {"no-name.desktop", nullptr},      // GIO names it "Unnamed"
        {"not-utf8.desktop", nullptr},     // the same
        {"no-exec.desktop", nullptr},      // cannot be started
        {"exec-missing.desktop", "Gone"},  // GIO looks for the program of Exec
        {"bom.desktop", "Mark"},           // GIO refuses the byte order mark
        {"garbage-line.desktop", "Plain"}, // GIO refuses the file
    };
    const std::pair<const char *, const char *> sessions[] = {
        {"|C", ""},
        {"|C", "A"},
        {"|POSIX", "B"},
        {"|C", "A:B"},
        {"|C", "B:A"},
        {"|C", "C"},
        {"|de_DE.UTF-8", ""},
        {"|de_AT.UTF-8@euro", ""},
        {"|sr_RS@latin", ""},
        {"pt|de_DE", ""},
        {"xx:de_AT|fr_FR.UTF-8", ""},
        {"pt_BR:de|C", ""},
    };
    for (const auto &[locale, desktop] : sessions) {
        SCOPED_TRACE(std::string(locale) + " in " + desktop);
        const QProcessEnvironment variables = environment(locale, desktop);
        Names expected = namesByGio(variables);
        ASSERT_GT(expected.size(), 15U);
        for (const Quirk &quirk : quirks) {
            expected.erase(quirk.id);
            if (quirk.expected)
                expected[quirk.id] = quirk.expected;
        }
        EXPECT_THAT(namesByUs(variables), ::testing::ContainerEq(expected));
    }
}

} // namespace
} // namespace quillbay::platform
