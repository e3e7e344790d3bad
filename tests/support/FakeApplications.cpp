#include "support/FakeApplications.h"

#include <QColor>
#include <QCoreApplication>

#include <chrono>
#include <utility>

namespace quillbay::testing {

using platform::ApplicationDetails;
using platform::InstalledApplication;

void Gate::close()
{
    const std::lock_guard lock(m_mutex);
    m_closed = true;
}

void Gate::open()
{
    {
        const std::lock_guard lock(m_mutex);
        m_closed = false;
    }
    m_opened.notify_all();
}

void Gate::pass() const
{
    std::unique_lock lock(m_mutex);
    m_opened.wait_for(lock, std::chrono::seconds(10), [this] { return !m_closed; });
}

InstalledApplication FakeApplicationSource::application(const QString &path, const QString &name,
                                                        const QString &category)
{
    InstalledApplication result;
    result.path = path;
    result.name = name;
    result.category = category;
    result.sortKey = name.toCaseFolded().toUtf8();
    return result;
}

void FakeApplicationSource::setFolders(const QStringList &folders)
{
    const std::lock_guard lock(m_mutex);
    m_folders = folders;
}

void FakeApplicationSource::setApplications(std::vector<InstalledApplication> applications)
{
    const std::lock_guard lock(m_mutex);
    m_applications = std::move(applications);
}

void FakeApplicationSource::setDates(const QString &path, const platform::FileDates &dates)
{
    const std::lock_guard lock(m_mutex);
    m_dates.insert(path, dates);
}

platform::FileDates FakeApplicationSource::dates(const QString &path) const
{
    const std::lock_guard lock(m_mutex);
    return m_dates.value(path);
}

void FakeApplicationSource::setDetails(const QString &path, const ApplicationDetails &details)
{
    const std::lock_guard lock(m_mutex);
    m_details.insert(path, details);
}

int FakeApplicationSource::scanCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_scans;
}

QStringList FakeApplicationSource::readPaths() const
{
    const std::lock_guard lock(m_mutex);
    return m_read;
}

QStringList FakeApplicationSource::folders() const
{
    const std::lock_guard lock(m_mutex);
    return m_folders;
}

std::vector<InstalledApplication> FakeApplicationSource::scan() const
{
    {
        const std::lock_guard lock(m_mutex);
        ++m_scans;
    }
    scanGate.pass();
    const std::lock_guard lock(m_mutex);
    return m_applications;
}

std::optional<ApplicationDetails> FakeApplicationSource::read(const QString &path) const
{
    const std::lock_guard lock(m_mutex);
    m_read.append(path);
    const auto found = m_details.constFind(path);
    return found == m_details.constEnd() ? std::nullopt : std::optional(*found);
}

QStringList FakeLauncher::paths() const
{
    QStringList all;
    for (const platform::LaunchRequest &request : requests)
        all.append(request.path);
    return all;
}

void FakeLauncher::launch(const platform::LaunchRequest &request,
                          std::function<void(const platform::LaunchResult &)> done)
{
    requests.push_back(request);
    if (!done)
        return;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [done = std::move(done), answer = result] { done(answer); },
        Qt::QueuedConnection);
}

void FakeIconSource::setColor(const QString &path, const QColor &color)
{
    const std::lock_guard lock(m_mutex);
    m_colors.insert(path, color);
}

QStringList FakeIconSource::askedPaths() const
{
    const std::lock_guard lock(m_mutex);
    return m_asked;
}

QImage FakeIconSource::icon(const QString &path, int edge) const
{
    QColor color = QColor::fromHsv(static_cast<int>(qHash(path, 0) % 360), 200, 200);
    {
        const std::lock_guard lock(m_mutex);
        m_asked.append(path);
        color = m_colors.value(path, color);
    }
    gate.pass();
    if (!color.isValid())
        return {};
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

QImage FakeIconSource::genericIcon(int edge) const
{
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::gray);
    return image;
}

} // namespace quillbay::testing
