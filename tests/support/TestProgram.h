#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>

namespace quillbay::testing {

/// A program that a test runs and reads line by line; killed with this object.
class TestProgram
{
public:
    TestProgram(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment);
    ~TestProgram();
    TestProgram(const TestProgram &) = delete;
    TestProgram &operator=(const TestProgram &) = delete;

    /// The lines written so far, without those taken by `forget`.
    QStringList lines();
    /// How many lines begin with `prefix`.
    int count(const QString &prefix);
    /// What follows the first such prefix; null if there is no such line.
    QString rest(const QString &prefix);
    void forget() { m_lines.clear(); }
    /// The next so many lines, waited for and taken; fewer where no more come.
    QStringList take(int count);
    QString nextLine() { return take(1).value(0); }

    /// Whether a line that begins with `prefix` is there, or comes within a bound, `times` times.
    bool waitFor(const QString &prefix, int times = 1);
    /// Whether `holds` becomes true within a bound, looked at after every line.
    bool waitUntil(const std::function<bool()> &holds);

    void send(const QByteArray &line);
    void kill();
    /// Once it has ended; -1 if it does not, or not by itself.
    int exitCode();

private:
    QProcess m_process;
    QByteArray m_partial;
    QStringList m_lines;
};

} // namespace quillbay::testing
