#pragma once

#include "library/AppItem.h"
#include "uninstaller/UninstallerFlow.h"
#include "uninstaller/UninstallerServices.h"

#include <QThreadPool>

#include <memory>

namespace quillbay {

/// Begins uninstalling, and has the one worker on which everything is removed: what one flow still has to
/// finish comes before what the next one asks for.
///
/// Thread: main thread. It ends after its flows and before its services: it closes the elevation, so that no
/// question is waited for, and waits for the item at hand.
class Uninstaller
{
public:
    explicit Uninstaller(UninstallerServices services);
    ~Uninstaller();
    Uninstaller(const Uninstaller &) = delete;
    Uninstaller &operator=(const Uninstaller &) = delete;

    /// A flow that has begun: it scans already, or waits for access.
    std::unique_ptr<UninstallerFlow> begin(const AppItem &app);

private:
    const UninstallerServices m_services;
    QThreadPool m_worker;
};

} // namespace quillbay
