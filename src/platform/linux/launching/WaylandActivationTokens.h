#pragma once

#include "platform/linux/launching/ActivationTokens.h"

#include <memory>

namespace quillbay::platform {

class XdgActivation;

/// Activation tokens of the compositor that the program's windows are shown by. Made after the application
/// object and gone before it.
class WaylandActivationTokens final : public ActivationTokens
{
public:
    WaylandActivationTokens();
    ~WaylandActivationTokens() override;

    bool isAvailable() const override;
    /// The token is handed on under both names, for programs that know only the older one.
    void request(const ActivationTokenRequest &request, Answer answer) override;

private:
    std::unique_ptr<XdgActivation> m_protocol; ///< Null outside Wayland.
};

} // namespace quillbay::platform
