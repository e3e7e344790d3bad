#pragma once

#include "platform/ColorSampler.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantMap>

class QDBusError;

namespace quillbay::platform {

/// The desktop's own picker, through `PickColor` of `org.freedesktop.portal.Screenshot`. A desktop without a
/// portal, or whose portal has no picker, is `Unavailable`; a portal that ends after it has taken the request
/// counts as cancelled. The answer may take as long as the person does.
class PortalColorSampler final : public QObject, public ColorSampler
{
    Q_OBJECT

public:
    explicit PortalColorSampler(const QDBusConnection &bus);
    ~PortalColorSampler() override;

    void sample(Finished finished) override;

private Q_SLOTS:
    void onResponse(uint code, const QVariantMap &results);

private:
    void ask();
    void refused(const QDBusError &error);
    void finish(const ColorSample &sample);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_portal;
    bool m_isTaken = false; ///< The portal has taken the request.
    QString m_request;      ///< Object path of the open request; empty without one.
    Finished m_finished;    ///< Set while a sampling is open.
};

} // namespace quillbay::platform
