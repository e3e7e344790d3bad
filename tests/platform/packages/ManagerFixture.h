#pragma once

#include "platform/linux/packages/LinuxPackageManager.h"
#include "platform/packages/FakeTools.h"
#include "platform/packages/OnWorker.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace quillbay::testing {

/// A `LinuxPackageManager` over stand-ins for every program, with records of what was to run elevated.
class ManagerFixture : public ::testing::Test
{
protected:
    ManagerFixture()
        : surroundings(tools.surroundings())
    {
    }

    platform::PackageOwner owner(const QByteArray &file)
    {
        return onWorker([&] { return platform::LinuxPackageManager(surroundings).owner(file); });
    }

    platform::RemovalPreview simulate(const platform::Package &package,
                                      platform::PackageData data = platform::PackageData::Keep)
    {
        return onWorker(
            [&] { return platform::LinuxPackageManager(surroundings).simulateRemoval(package, data); });
    }

    platform::RemovalResult remove(const platform::Package &package, const QStringList &approved,
                                   platform::PackageData data = platform::PackageData::Keep)
    {
        platform::PackageRemoval removal{package, approved, data, {}};
        if (isElevationThere) {
            removal.runElevated = [this](const QStringList &command) {
                elevated.append(command);
                return elevation;
            };
        }
        return onWorker([&] { return platform::LinuxPackageManager(surroundings).remove(removal); });
    }

    static platform::Package package(platform::PackageKind kind, const QString &name, const QString &id)
    {
        platform::Package result{kind, name, id, {}};
        result.canBeRemoved = true;
        return result;
    }
    static platform::Package debian(const QString &name)
    {
        return package(platform::PackageKind::Debian, name, name);
    }

    /// Writes an entry below the home, with these lines in its main group; returns its path.
    QByteArray entry(const QString &relative, const QByteArray &lines)
    {
        const QString path = QString::fromUtf8(tools.home()) + u'/' + relative;
        QDir().mkpath(path.section(u'/', 0, -2));
        QFile file(path);
        const QByteArray text = "[Desktop Entry]\nType=Application\nName=A\nExec=a\n" + lines;
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(path));
        return QFile::encodeName(path);
    }

    /// A dpkg system in which removing "app" takes these too.
    void makeDebianSystem(const QStringList &others = {})
    {
        QStringList facts = {FakeTools::factsLine(QStringLiteral("app"))};
        QByteArray simulation = "Remv app [1.0]\n";
        for (const QString &name : others) {
            facts.append(FakeTools::factsLine(name));
            simulation += "Remv " + name.toUtf8() + " [2.0]\n";
        }
        tools.answerFacts(facts);
        tools.answerSearch({});
        tools.answer(QStringLiteral("apt-get"), QStringLiteral("--simulate"), {simulation, {}, 0});
        tools.answer(QStringLiteral("dpkg"), QStringLiteral("--remove"), {{}, "must not run as the user", 1});
    }

    /// Calls that change something.
    QStringList removingCalls() const
    {
        QStringList calls = tools.calls();
        calls.removeIf([](const QString &call) {
            return call.startsWith(QStringLiteral("dpkg-query|")) ||
                   call.contains(QStringLiteral("|--simulate|")) ||
                   call.contains(QStringLiteral("|--test|")) || call.contains(QStringLiteral("|--query|")) ||
                   call.startsWith(QStringLiteral("flatpak|info|")) ||
                   call.startsWith(QStringLiteral("snap|list|"));
        });
        return calls;
    }

    FakeTools tools;
    platform::PackageSurroundings surroundings;
    bool isElevationThere = true;
    platform::ElevatedResult elevation = {platform::ElevatedOutcome::Done, {}};
    QList<QStringList> elevated;
};

} // namespace quillbay::testing
