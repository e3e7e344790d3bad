#pragma once

#include "platform/ApplicationLauncher.h"
#include "platform/linux/launching/ActivationTokens.h"
#include "platform/linux/launching/ChildEnvironment.h"

#include <QDBusConnection>
#include <QThreadPool>

#include <memory>
#include <vector>

namespace quillbay::platform {

class ApplicationSource;

/// Launches desktop entries, bundles and images. Reading the application and starting its process happen on a
/// worker; the launch itself is an object on the main thread that goes from one answer to the next.
///
/// `done` of a launch that is under way when the launcher goes is not called; a worker that is at it then is
/// waited for.
class LinuxApplicationLauncher final : public ApplicationLauncher
{
public:
    /// What the launcher needs of its surroundings, replaceable in a test.
    struct Surroundings
    {
        Environment environment; ///< Of this process; what is private in it is left out for each program.
        QDBusConnection bus;     ///< The session bus; need not be connected.
        std::vector<std::unique_ptr<ActivationTokens>> tokens; ///< The first available one is asked.

        /// Those of the running session. Needs the application object.
        static Surroundings ofSession();
    };

    /// `source` is read from workers and must outlive the launcher.
    LinuxApplicationLauncher(const ApplicationSource &source, Surroundings surroundings);
    ~LinuxApplicationLauncher() override;

    void launch(const LaunchRequest &request, std::function<void(const LaunchResult &)> done) override;

private:
    class Launch;

    const ApplicationSource &m_source;
    Surroundings m_surroundings;
    const Environment m_childEnvironment;
    QThreadPool m_workers;
    QObject m_launches; ///< Parent of those under way.
};

} // namespace quillbay::platform
