#include "platform/none/NoApplications.h"

#include <QCoreApplication>
#include <QPainter>

#include <utility>

namespace quillbay::platform {

QStringList NoApplicationSource::folders() const
{
    return {};
}

FileDates NoApplicationSource::dates(const QString &) const
{
    return {};
}

std::vector<InstalledApplication> NoApplicationSource::scan() const
{
    return {};
}

std::optional<ApplicationDetails> NoApplicationSource::read(const QString &) const
{
    return std::nullopt;
}

void NoApplicationLauncher::launch(const LaunchRequest &, std::function<void(const LaunchResult &)> done)
{
    if (!done)
        return;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [done = std::move(done)] {
            done({LaunchOutcome::Failed, QStringLiteral("applications cannot be started on this desktop")});
        },
        Qt::QueuedConnection);
}

QImage NoIconSource::icon(const QString &, int) const
{
    return {};
}

QImage NoIconSource::documentIcon(const QString &, int) const
{
    return {};
}

QImage NoIconSource::genericIcon(int edge) const
{
    const int side = edge > 0 ? edge : 1;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x8e, 0x8e, 0x93));
    const qreal margin = side * 0.08;
    const QRectF square = QRectF(0, 0, side, side).adjusted(margin, margin, -margin, -margin);
    painter.drawRoundedRect(square, side * 0.2, side * 0.2);
    return image;
}

} // namespace quillbay::platform
