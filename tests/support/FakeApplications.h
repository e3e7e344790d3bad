#pragma once

#include "platform/ApplicationLauncher.h"
#include "platform/ApplicationSource.h"
#include "platform/IconSource.h"

#include <QHash>

#include <condition_variable>
#include <mutex>
#include <vector>

namespace quillbay::testing {

/// Makes the calls of other threads wait until the test lets them go. A call waits ten seconds at most, so
/// that a failing test ends.
class Gate
{
public:
    void close();
    void open();
    void pass() const;

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_opened;
    bool m_closed = false;
};

/// Answers with what the test set. Thread: any, as the interface promises.
class FakeApplicationSource final : public platform::ApplicationSource
{
public:
    /// A record with a sort key that orders by the name, case ignored.
    static platform::InstalledApplication application(const QString &path, const QString &name,
                                                      const QString &category = {});

    void setFolders(const QStringList &folders);
    void setApplications(std::vector<platform::InstalledApplication> applications);
    void setDates(const QString &path, const platform::FileDates &dates);
    void setDetails(const QString &path, const platform::ApplicationDetails &details);
    int scanCount() const;
    QStringList readPaths() const; ///< Every path that was read, in order.

    Gate scanGate; ///< Closed: scans wait, after they were counted.

    QStringList folders() const override;
    std::vector<platform::InstalledApplication> scan() const override;
    platform::FileDates dates(const QString &path) const override;
    std::optional<platform::ApplicationDetails> read(const QString &path) const override;

private:
    mutable std::mutex m_mutex;
    QStringList m_folders;
    std::vector<platform::InstalledApplication> m_applications;
    QHash<QString, platform::ApplicationDetails> m_details;
    QHash<QString, platform::FileDates> m_dates;
    mutable int m_scans = 0;
    mutable QStringList m_read;
};

/// Records what was to be launched, and answers each request from the event loop with `result`.
class FakeLauncher final : public platform::ApplicationLauncher
{
public:
    platform::LaunchResult result{platform::LaunchOutcome::Started, {}};
    std::vector<platform::LaunchRequest> requests;

    QStringList paths() const; ///< Of `requests`.
    void launch(const platform::LaunchRequest &request,
                std::function<void(const platform::LaunchResult &)> done) override;
};

/// Icons are squares of one colour: the one set for the path (invalid: it has no icon), else one made from
/// the path; the generic icon is grey. Thread: any.
class FakeIconSource final : public platform::IconSource
{
public:
    void setColor(const QString &path, const QColor &color);
    QStringList askedPaths() const; ///< Every path whose icon was asked for, in order.

    Gate gate; ///< Closed: `icon` waits, after it was counted.

    QImage icon(const QString &path, int edge) const override;
    QImage documentIcon(const QString &path, int edge) const override { return icon(path, edge); }
    QImage genericIcon(int edge) const override;

private:
    mutable std::mutex m_mutex;
    QHash<QString, QColor> m_colors;
    mutable QStringList m_asked;
};

} // namespace quillbay::testing
