#pragma once

#include "platform/WindowEffects.h"

namespace quillbay::platform {

/// Windows under a Wayland compositor: it alone places them, and raises one only for a token that a user's
/// action gave. No compositor's own blur protocol is spoken.
class WaylandWindowEffects final : public WindowEffects
{
public:
    /// Whether the application's windows are on Wayland. Needs the application object.
    static bool isAvailable();

    bool canBlurBehind() const override { return false; }
    void setBlurBehind(QWindow *window, const QRegion &region) override;
    bool canPlaceWindows() const override { return false; }
    bool canShowThrough() const override { return true; }
    /// Qt takes the token from the environment, where it never stays; an empty one leaves what is there,
    /// which on the first call is the token that the program was started with.
    void bringToFront(QWindow *window, const QString &activationToken) override;
};

} // namespace quillbay::platform
