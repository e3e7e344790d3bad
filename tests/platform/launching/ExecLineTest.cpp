#include "platform/linux/launching/ExecLine.h"

#include <gtest/gtest.h>

using namespace quillbay::platform;

namespace {

struct Case
{
    const char *exec;
    QStringList arguments; ///< None: the line is invalid.
};

const ExecFields fields{QStringLiteral("an-icon"), QStringLiteral("Name \"with' spaces"),
                        QStringLiteral("/usr/share/applications/a b.desktop")};

void check(const std::vector<Case> &cases)
{
    for (const Case &each : cases) {
        const ExecLine line = parseExecLine(QString::fromUtf8(each.exec), fields);
        EXPECT_EQ(line.arguments, each.arguments)
            << each.exec << " -> " << line.arguments.join(u'|').toStdString();
        EXPECT_EQ(line.isValid(), !each.arguments.isEmpty()) << each.exec;
    }
}

QStringList words(const char *separatedByBars)
{
    return QString::fromUtf8(separatedByBars).split(u'|');
}

} // namespace

TEST(ExecLine, SplitsAndUnquotes)
{
    check({
        {"run", words("run")},
        {"  run\t-a   b  ", words("run|-a|b")},
        {R"("/opt/My App/run" "a b")", words("/opt/My App/run|a b")},
        {R"(run "" x)", words("run||x")},
        {R"(run "\"\`\$\\")", words(R"(run|"`$\)")},
        {R"(run "C:\new")", words(R"(run|C:\new)")},
        {R"(run C:\\windows\\start.exe)", words(R"(run|C:\windows\start.exe)")},
        {R"(run a\ b)", words("run|a b")},
        {R"(sh -c 'echo "$HOME" \n')", words(R"(sh|-c|echo "$HOME" \n)")},
        {R"(env PREFIX="/home/u/my wine" wine)", words("env|PREFIX=/home/u/my wine|wine")},
        {R"(run ~ $HOME #no *.txt ; |)",
         {QStringLiteral("run"), QStringLiteral("~"), QStringLiteral("$HOME"), QStringLiteral("#no"),
          QStringLiteral("*.txt"), QStringLiteral(";"), QStringLiteral("|")}},
        {"käse --größe", words("käse|--größe")},
    });
}

TEST(ExecLine, ExpandsFieldCodes)
{
    const QString &name = fields.name;
    const QString &path = fields.path;
    check({
        {"run %i", words("run|--icon|an-icon")},
        {"run %c", {QStringLiteral("run"), name}},
        {"run --caption=%c-%k", {QStringLiteral("run"), QStringLiteral("--caption=%1-%2").arg(name, path)}},
        {"run \"%k\"", {QStringLiteral("run"), path}},
        {"run 100%% %%c", words("run|100%|%c")},
        {"run %f %F %u %U", words("run")},
        {"run \"%f\" --open=%u -x", words("run|--open=|-x")},
        {"run %d %D %n %N %v %m", words("run")},
        {"flatpak run --file-forwarding org.a.B @@u %u @@",
         words("flatpak|run|--file-forwarding|org.a.B|@@u|@@")},
    });
    const ExecLine plain = parseExecLine(QStringLiteral("run %i x"), {{}, name, path});
    EXPECT_EQ(plain.arguments, words("run|x"));
    const ExecLine percent = parseExecLine(QStringLiteral("run %c"), {{}, QStringLiteral("50%f"), path});
    EXPECT_EQ(percent.arguments, words("run|50%f"));
}

TEST(ExecLine, RefusesWhatCannotBeRun)
{
    check({
        {"", {}},
        {"   ", {}},
        {"\"\" x", {}},
        {"%f", {}},
        {"run \"open", {}},
        {"run 'open", {}},
        {"run end\\", {}},
        {"run %", {}},
        {"run %x", {}},
        {"run a%z", {}},
        {"run % f", {}},
    });
    EXPECT_FALSE(
        parseExecLine(QStringLiteral("run a") + QChar(u'\0') + QStringLiteral("b"), fields).isValid());
}
