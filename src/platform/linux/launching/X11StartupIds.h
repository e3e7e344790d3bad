#pragma once

#include "platform/linux/launching/ActivationTokens.h"

namespace quillbay::platform {

/// Startup ids of the Startup Notification protocol: `quillbay-PID-HOST-N_TIME<timestamp>`. Window managers
/// read the time of the click from the id, which is all that their focus rules need; the broadcast that would
/// show a busy pointer is not sent.
class X11StartupIds final : public ActivationTokens
{
public:
    bool isAvailable() const override;
    /// An id only for programs that ask for one. Without a time in the request it is that of the user's last
    /// input.
    void request(const ActivationTokenRequest &request, Answer answer) override;

private:
    int m_count = 0;
};

/// The id number `count` of process `pid` on `host`.
QString startupId(qint64 pid, const QString &host, int count, quint32 timestamp);

} // namespace quillbay::platform
