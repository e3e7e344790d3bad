#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quillbay::platform {

enum class PackageKind { Debian, Rpm, Flatpak, Snap };

/// What a package manager installed as one thing.
struct Package
{
    PackageKind kind = PackageKind::Debian;
    /// "firefox-esr"; the application id of a flatpak, the instance name of a snap.
    QString name;
    /// What its manager calls exactly this one: "libfoo:i386", "foo-1.0-2.x86_64",
    /// "app/org.foo.Bar/x86_64/stable".
    QString id;
    /// For the user: "firefox-esr, Debian package".
    QString displayText;
    bool isForOneUser = false; ///< A flatpak in the user's own installation.
    bool canBeRemoved = false; ///< There is a way to ask its manager, and it is clear what to ask.
    bool isEssential = false;  ///< The system does not go without it, as its manager says.
    qint64 installedBytes = 0; ///< About what it takes on the disk; 0 where its manager does not say.

    bool operator==(const Package &) const = default;
};

/// Who owns a file. An `error` means that nobody can tell: such a file may be a package's.
struct PackageOwner
{
    std::optional<Package> package;
    QString error;
};

/// What the user keeps in the application: of flatpaks and snaps only, others never touch it.
enum class PackageData { Keep, Remove };

/// What a removal would do, found by simulation: nothing has changed.
struct RemovalPreview
{
    enum class Verdict {
        Allowed, ///< `packages` would go.
        Refused, ///< The system, the desktop or this program would go with it; `reason` says what.
        Unknown, ///< It could not be found out; `reason` says why. Not to be removed.
    };

    Verdict verdict = Verdict::Unknown;
    /// Names of all packages that would be removed: the package itself, then the others, sorted.
    QStringList packages;
    /// The folder that would go too, for the user to read; empty: none.
    QString data;
    QString reason;
};

enum class ElevatedOutcome { Done, Declined, NotAuthorised, Failed };

struct ElevatedResult
{
    ElevatedOutcome outcome = ElevatedOutcome::Failed;
    QString text; ///< What the command or the system said; for the user.
};

/// Runs a program as administrator after asking the user: absolute path and arguments, no shell in between.
/// Blocks until it ends; called on the thread of `PackageManager::remove`.
using ElevatedRun = std::function<ElevatedResult(const QStringList &command)>;

struct PackageRemoval
{
    Package package;
    QStringList approved; ///< `RemovalPreview::packages` as the user saw and accepted them.
    PackageData data = PackageData::Keep;
    ElevatedRun runElevated; ///< Where the package's manager does not ask the user itself. May be empty.
};

enum class RemovalOutcome {
    Removed,
    Declined,      ///< The user dismissed the question for authority.
    NotAuthorised, ///< No authority, or nobody who could have asked the user.
    Changed,       ///< What would go now is not what was approved. Nothing was removed.
    Refused,       ///< As `RemovalPreview::Verdict::Refused`. Nothing was removed.
    Failed,
};

struct RemovalResult
{
    RemovalOutcome outcome = RemovalOutcome::Failed;
    QString text; ///< Why not, for the user; empty when removed.
};

/// The package managers of this system: which package an application belongs to, and its removal. No file is
/// removed here by its path.
///
/// Thread: any but the main thread, several at a time. Every call blocks until it has its answer, which may
/// take seconds, a removal minutes, and every call ends within a limit.
class PackageManager
{
public:
    virtual ~PackageManager() = default;

    /// The owner of an application's file (an entry, a bundle, an image), at an absolute path in the bytes of
    /// the file system. No package and no error: it belongs to none.
    virtual PackageOwner owner(const QByteArray &applicationFile) const = 0;

    /// Those of these files that came with a package, and those of which nobody can tell: where it can be,
    /// by one question for all of them.
    virtual QByteArrayList ofPackages(const QByteArrayList &files) const = 0;

    virtual RemovalPreview simulateRemoval(const Package &package, PackageData data) const = 0;

    /// Simulates anew, compares, then removes.
    virtual RemovalResult remove(const PackageRemoval &removal) = 0;
};

/// Whether an application must not be removed at all.
inline bool isSystemPackage(const Package &package, const RemovalPreview &preview)
{
    return package.isEssential || preview.verdict == RemovalPreview::Verdict::Refused;
}

} // namespace quillbay::platform
