#include "platform/none/NoBiometrics.h"

#include <utility>

namespace quillbay::platform {

void NoBiometrics::check(Answer answer)
{
    if (answer)
        QMetaObject::invokeMethod(
            this, [answer = std::move(answer)] { answer(false, {}); }, Qt::QueuedConnection);
}

void NoBiometrics::evaluate(const QString &, Answer answer)
{
    check(std::move(answer));
}

} // namespace quillbay::platform
