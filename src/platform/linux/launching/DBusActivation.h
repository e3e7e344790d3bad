#pragma once

#include "platform/linux/launching/ActivationTokens.h"

#include <QDBusConnection>
#include <QString>

#include <functional>

class QObject;

namespace quillbay::platform {

enum class ActivationAnswer {
    Taken,   ///< The application took the call.
    Refused, ///< It could not be reached, or answered with an error: another way may be tried.
    Silent   ///< It is there or being started, and has not answered: another try could start it twice.
};

/// Whether a desktop file id can be the bus name of an application: a well-known name with a dot in it.
bool isActivatableName(const QString &identifier);

/// The object that such an application offers, by the Desktop Entry Specification: `/org/example/App_1`.
QString activationObjectPath(const QString &identifier);

/// Calls `org.freedesktop.Application.Activate` on the application, starting it if need be. `answer` comes
/// from the event loop, unless `context` is gone by then, with the error's text where there is one.
void activateByBus(const QDBusConnection &bus, const QString &identifier, const ActivationToken &token,
                   QObject *context, std::function<void(ActivationAnswer, const QString &)> answer);

} // namespace quillbay::platform
