#include "platform/linux/launching/LinuxApplicationLauncher.h"

#include "platform/ApplicationSource.h"
#include "platform/linux/launching/ApplicationScope.h"
#include "platform/linux/launching/DBusActivation.h"
#include "platform/linux/launching/LaunchPlan.h"
#include "platform/linux/launching/WaylandActivationTokens.h"
#include "platform/linux/launching/X11StartupIds.h"

#include <QFileInfo>
#include <QFutureWatcher>
#include <QPointer>
#include <QPromise>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <utility>

namespace quillbay::platform {

namespace {

struct Started
{
    LaunchResult result;
    qint64 pid = 0;
};

// Runs `work` on a worker and then `next` with its value on the thread of `context`, unless that is gone by
// then.
template <typename Work, typename Next>
void onWorker(QThreadPool &workers, QObject *context, Work work, Next next)
{
    using Value = decltype(work());
    const auto promise = std::make_shared<QPromise<Value>>();
    auto *watcher = new QFutureWatcher<Value>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context, [watcher, next = std::move(next)] {
        watcher->deleteLater();
        next(watcher->result());
    });
    watcher->setFuture(promise->future());
    workers.start([promise, work = std::move(work)] {
        promise->start();
        promise->addResult(work());
        promise->finish();
    });
}

Started startProcess(const QString &path, const ApplicationDetails &details, const ActivationToken &token,
                     const Environment &environment)
{
    const auto plan = planLaunch(path, details, token, environment);
    if (const auto *refused = std::get_if<LaunchResult>(&plan))
        return {*refused, 0};
    const auto &process = std::get<DetachedProcess>(plan);
    const DetachedStart start = startDetached(process);
    return {resultOfStart(process, start), start.pid};
}

} // namespace

class LinuxApplicationLauncher::Launch : public QObject
{
public:
    Launch(LinuxApplicationLauncher &launcher, const LaunchRequest &request,
           std::function<void(const LaunchResult &)> done)
        : QObject(&launcher.m_launches)
        , m_launcher(launcher)
        , m_path(request.path)
        , m_window(request.window)
        , m_timestamp(request.timestamp)
        , m_done(std::move(done))
    {
    }

    void read()
    {
        onWorker(
            m_launcher.m_workers, this,
            [&source = m_launcher.m_source, path = m_path] { return source.read(path); },
            [this](const std::optional<ApplicationDetails> &details) {
                if (!details) {
                    finish({LaunchOutcome::NotFound, QStringLiteral("%1 cannot be read").arg(m_path)});
                    return;
                }
                m_details = *details;
                askForToken();
            });
    }

private:
    void askForToken()
    {
        const auto &ways = m_launcher.m_surroundings.tokens;
        const auto way =
            std::find_if(ways.begin(), ways.end(), [](const auto &each) { return each->isAvailable(); });
        if (way == ways.end()) {
            activate({});
            return;
        }
        const ActivationTokenRequest request{m_window, m_timestamp, m_details.identifier,
                                             m_details.startupNotify.value_or(false)};
        (*way)->request(request, [self = QPointer(this)](const ActivationToken &token) {
            if (self)
                self->activate(token);
        });
    }

    void activate(const ActivationToken &token)
    {
        const QDBusConnection &bus = m_launcher.m_surroundings.bus;
        if (!m_details.dbusActivatable || !isActivatableName(m_details.identifier) || !bus.isConnected()) {
            startProgram(token, QString());
            return;
        }
        activateByBus(bus, m_details.identifier, token, this,
                      [this, token](ActivationAnswer answer, const QString &error) {
                          if (answer == ActivationAnswer::Taken)
                              finish({LaunchOutcome::Started, {}});
                          else if (answer == ActivationAnswer::Silent)
                              finish({LaunchOutcome::Failed, error});
                          else
                              startProgram(token, error);
                      });
    }

    // `refusal` is what the application's bus name answered, if it was asked.
    void startProgram(const ActivationToken &token, const QString &refusal)
    {
        if (!refusal.isEmpty() && m_details.exec.isEmpty()) {
            finish({LaunchOutcome::Failed, refusal});
            return;
        }
        onWorker(
            m_launcher.m_workers, this,
            [path = m_path, details = m_details, token, environment = m_launcher.m_childEnvironment] {
                return startProcess(path, details, token, environment);
            },
            [this](const Started &started) {
                if (started.pid > 0)
                    moveToScope(m_launcher.m_surroundings.bus, scopeIdentifier(), started.pid);
                finish(started.result);
            });
    }

    QString scopeIdentifier() const
    {
        return m_details.identifier.isEmpty() ? QFileInfo(m_path).completeBaseName() : m_details.identifier;
    }

    void finish(const LaunchResult &result)
    {
        deleteLater();
        if (const auto done = std::exchange(m_done, nullptr))
            done(result);
    }

    LinuxApplicationLauncher &m_launcher;
    const QString m_path;
    const QPointer<QWindow> m_window;
    const quint32 m_timestamp;
    std::function<void(const LaunchResult &)> m_done;
    ApplicationDetails m_details;
};

LinuxApplicationLauncher::Surroundings LinuxApplicationLauncher::Surroundings::ofSession()
{
    Surroundings result{startEnvironment(), QDBusConnection::sessionBus(), {}};
    result.tokens.push_back(std::make_unique<WaylandActivationTokens>());
    result.tokens.push_back(std::make_unique<X11StartupIds>());
    return result;
}

LinuxApplicationLauncher::LinuxApplicationLauncher(const ApplicationSource &source, Surroundings surroundings)
    : m_source(source)
    , m_surroundings(std::move(surroundings))
    , m_childEnvironment(childEnvironment(m_surroundings.environment))
{
}

LinuxApplicationLauncher::~LinuxApplicationLauncher() = default;

void LinuxApplicationLauncher::launch(const LaunchRequest &request,
                                      std::function<void(const LaunchResult &)> done)
{
    auto *launch = new Launch(*this, request, std::move(done));
    launch->read();
}

} // namespace quillbay::platform
