#pragma once

#include "platform/linux/packages/SystemPackages.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QList>
#include <QStringList>

namespace quillbay::platform {

/// What `dpkg-query --search` takes for exactly this path, which it reads as a pattern.
QByteArray debianSearchPattern(const QByteArray &path);

struct DebianOwners
{
    QStringList names; ///< Of packages, with an architecture where it says one; each once.
    /// The file lies where a package's was moved to: whose it is, the answer does not say.
    bool isDiverted = false;
};

/// Reads the answer of `dpkg-query --search` for the file that has these spellings; lines about others are
/// passed over. Of a file that one package diverts only that package counts: another's lies elsewhere.
DebianOwners debianOwners(const QByteArray &output, const QByteArrayList &spellings);

/// The format that `debianFacts` reads, for `dpkg-query --show`.
inline constexpr char debianFactsFormat[] =
    R"(${Package}\t${binary:Package}\t${db:Status-Status}\t${Essential}\t${Protected}\t${Priority}\t${Installed-Size}\t${Provides}\n)";

/// The packages of such an answer that are installed. An answer in another form is an error.
PackageAnswer<QList<PackageFacts>> debianFacts(const QByteArray &output);

/// Reads `apt-get --simulate remove`. An error if it would do anything but remove.
PackageAnswer<QStringList> debianSimulation(const QByteArray &output);

} // namespace quillbay::platform
