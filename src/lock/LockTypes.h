#pragma once

#include "app/SecurityLock.h"

#include <QQmlEngine>

namespace quillbay {

/// What the screens of the lock know of the view model.
struct SecurityLockType
{
    Q_GADGET
    QML_FOREIGN(quillbay::SecurityLock)
    QML_NAMED_ELEMENT(SecurityLock)
    QML_UNCREATABLE("The view model is the one lock")
};

struct ObservableObjectType
{
    Q_GADGET
    QML_FOREIGN(quillbay::ObservableObject)
    QML_ANONYMOUS
};

} // namespace quillbay
