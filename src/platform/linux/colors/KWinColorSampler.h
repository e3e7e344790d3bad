#pragma once

#include "platform/ColorSampler.h"

#include <QDBusConnection>
#include <QObject>

namespace quillbay::platform {

/// The picker of the KWin compositor, for a session of its without a portal: `pick()` of
/// `org.kde.kwin.ColorPicker`, which answers with a structure of one number, 0xAARRGGBB.
class KWinColorSampler final : public QObject, public ColorSampler
{
    Q_OBJECT

public:
    explicit KWinColorSampler(const QDBusConnection &bus);

    void sample(Finished finished) override;

private:
    void ask();

    QDBusConnection m_bus;
    Finished m_finished; ///< Set while a sampling is open.
};

} // namespace quillbay::platform
