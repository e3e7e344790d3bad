#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace quillbay::platform {

/// One child of a folder, looked up by its exact name and never by listing.
struct NamedChild
{
    enum class Name {
        Identifier, ///< The application's identifier.
        Program,    ///< Each of `ApplicationFacts::programNames`.
    };

    QByteArray folder;
    Name name = Name::Identifier;
    QByteArray suffix = {}; ///< What follows the name.
};

/// Where applications leave files on this desktop: for each step of a search the folders that it looks into,
/// in this order. A step without a folder finds nothing. All paths are the file system's own bytes, absolute,
/// without "." and ".." and without a slash at their end; none needs to exist.
struct ResidualLayout
{
    QByteArray home;
    QList<QByteArray> preferences;
    QList<QByteArray> appSupport;
    QList<QByteArray> caches;
    QList<QByteArray> logs;
    QList<NamedChild> containers;
    QList<QByteArray> groupContainers;
    QList<QByteArray> launchAgents;
    QList<QByteArray> crashReports;
    QList<NamedChild> savedState;
    QList<QByteArray> extensions;
    QList<QByteArray> receipts;
    /// What belongs to no single application whatever it is called: the home folder, the base folders of
    /// configuration, data, caches and state, package databases. Neither one of them nor a folder above one
    /// is ever removed.
    QList<QByteArray> sharedFolders;
};

/// What a desktop knows of one application beyond its name and its path.
struct ApplicationFacts
{
    /// Bundle identifier, desktop file id without ".desktop" or flatpak application id; empty: it has none.
    QString identifier;
    /// Names that stand for the application where an entry bears one as its whole name, whatever the case.
    QStringList wholeNames;
    /// Names under which a package system keeps the folders of a program.
    QStringList programNames;
    /// Files and folders that are the application itself, beside the path that it is listed by.
    QList<QByteArray> ownFiles;
};

/// The places of a desktop where an application may have left something, and what must stay.
///
/// Thread: every function may be called from any thread. Each may read files: belongs on a worker. An object
/// stands by itself and may be kept by a worker after the platform ended.
class ResidualRoots
{
public:
    virtual ~ResidualRoots() = default;

    virtual ResidualLayout layout() const = 0;

    /// `path` is that of an application scan's result. Facts that cannot be found out are left out.
    virtual ApplicationFacts factsOf(const QString &path, const QString &name) const = 0;

    /// Where file systems are mounted now, the file system's own bytes; nothing if that cannot be said.
    virtual std::optional<QList<QByteArray>> mountPoints() const = 0;
};

} // namespace quillbay::platform
