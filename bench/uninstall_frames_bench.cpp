// What a scan for an application's files leaves of the window's frames: uninstall_frames_bench [ROUNDS]
//
// The program's window, 1440 by 900, on an X server of its own where there is no display, with the
// uninstaller open on an application in a made home of 200,000 files and 3,000 entries in each folder that a
// step looks into. Each round opens it anew: its bar and rings move for two seconds while nothing is scanned,
// then the scan is let go. Frames are counted and timed in both, as they leave the window; on the main thread
// every event is timed, frames apart from all others. A step is on the screen with the first frame that was
// begun after its post arrived.

#include "app/QuillbayViewModel.h"
#include "bench/MadeHome.h"
#include "bench/OwnDisplay.h"
#include "bench/ProgramScreens.h"
#include "support/TestHome.h"
#include "support/TestLibrary.h"
#include "uninstaller/UninstallerFlow.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QStyleHints>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <numeric>
#include <thread>
#include <vector>

using namespace quillbay;
using namespace quillbay::testing;

namespace {

constexpr QSize windowSize(1440, 900);
constexpr int patience = 30'000;        ///< Milliseconds.
constexpr int rest = 2'000;             ///< Milliseconds of bar and rings alone.
constexpr double limit = 8;             ///< Milliseconds for an event of the main thread.
constexpr double refresh = 1000.0 / 60; ///< Milliseconds.

[[noreturn]] void stop(const char *why)
{
    std::fprintf(stderr, "uninstall_frames_bench: %s\n", why);
    std::exit(EXIT_FAILURE);
}

/// Times every event that the main thread handles: what it does itself, apart from drawing.
class TimedApplication final : public QGuiApplication
{
public:
    using QGuiApplication::QGuiApplication;

    double longest = 0; ///< Milliseconds.
    double drawn = 0;   ///< Milliseconds of drawing in the event at hand.

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (QThread::currentThread() != thread() || m_isInside)
            return QGuiApplication::notify(receiver, event);
        m_isInside = true;
        drawn = 0;
        const double start = now();
        const bool result = QGuiApplication::notify(receiver, event);
        longest = std::max(longest, now() - start - drawn);
        m_isInside = false;
        return result;
    }

private:
    bool m_isInside = false;
};

void pause(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void waitFor(const char *what, const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(patience);
    while (!condition()) {
        if (deadline.hasExpired())
            stop(what);
        pause(1);
    }
}

double percentile(std::vector<double> values, double part)
{
    if (values.empty())
        stop("nothing was measured");
    std::sort(values.begin(), values.end());
    return values[size_t(std::ceil(part * double(values.size()))) - 1];
}

/// When frames left the window, how long drawing them took, and how long what was to be shown had to wait for
/// one.
class Frames : public QObject
{
public:
    struct Times
    {
        std::vector<double> gaps; ///< Between frames.
        std::vector<double> drawing;
        std::vector<double> waits;
    };

    Frames(QQuickWindow &window, TimedApplication &application)
    {
        connect(&window, &QQuickWindow::beforeSynchronizing, this,
                [this] { m_taken = std::exchange(m_posted, 0); });
        connect(&window, &QQuickWindow::beforeRendering, this, [this] { m_begin = now(); });
        connect(&window, &QQuickWindow::frameSwapped, this, [this, &application] {
            const double end = now();
            m_times.drawing.push_back(end - m_begin);
            application.drawn += end - m_begin;
            if (m_last > 0)
                m_times.gaps.push_back(end - m_last);
            m_last = end;
            if (m_taken > 0)
                m_times.waits.push_back(end - std::exchange(m_taken, 0));
        });
    }

    /// Something is to be shown from now on.
    void post() { m_posted = m_posted > 0 ? m_posted : now(); }
    /// Those since the last call.
    Times take()
    {
        m_last = 0;
        return std::exchange(m_times, {});
    }

private:
    Times m_times;
    double m_begin = 0;
    double m_last = 0;
    double m_posted = 0;
    double m_taken = 0;
};

/// All rounds of one phase.
struct Phase
{
    std::vector<double> gaps;
    std::vector<double> drawing;
    std::vector<double> waits;
    std::vector<double> longest; ///< Event of each round.

    void add(const Frames::Times &times, TimedApplication &application)
    {
        append(gaps, times.gaps);
        append(drawing, times.drawing);
        append(waits, times.waits);
        longest.push_back(std::exchange(application.longest, 0));
    }

    void print(const char *title) const
    {
        const double sum = std::accumulate(gaps.begin(), gaps.end(), 0.0);
        std::printf(
            "%-13s %5.1f frames a second, %4.1f ms apart, 99th percentile %4.1f, at most %5.1f; drawn in "
            "%4.1f ms; longest event %5.2f ms, at most %5.2f (limit %.0f)\n",
            title, 1000 * double(gaps.size()) / sum, percentile(gaps, 0.5), percentile(gaps, 0.99),
            percentile(gaps, 1), percentile(drawing, 0.5), percentile(longest, 0.5), percentile(longest, 1),
            limit);
    }

    void add(const Phase &other)
    {
        append(gaps, other.gaps);
        append(drawing, other.drawing);
        append(waits, other.waits);
        append(longest, other.longest);
    }
    static void append(std::vector<double> &all, const std::vector<double> &more)
    {
        all.insert(all.end(), more.begin(), more.end());
    }
};

/// Posts to the main thread all the time, as a scan does at times, and finds out how long that waits there.
class Posting
{
public:
    Posting()
        : m_thread([this] {
            while (!m_ended) {
                QMetaObject::invokeMethod(
                    QCoreApplication::instance(), [this, posted = now()] { waits.push_back(now() - posted); },
                    Qt::QueuedConnection);
                std::this_thread::sleep_for(std::chrono::milliseconds(3));
            }
        })
    {
    }
    ~Posting()
    {
        m_ended = true;
        m_thread.join();
        QCoreApplication::sendPostedEvents();
    }

    std::vector<double> waits; ///< Main thread.

private:
    std::atomic_bool m_ended = false;
    std::thread m_thread;
};

/// One application uninstalled again and again.
class Rounds
{
public:
    Rounds(TimedApplication &application, QuillbayViewModel &viewModel, QQuickWindow &window,
           MadeRoots &roots)
        : m_application(application)
        , m_viewModel(viewModel)
        , m_window(window)
        , m_roots(roots)
        , m_frames(window, application)
    {
        m_app.name = QStringLiteral("Acme");
        m_app.path = QFile::decodeName(roots.layout().home + "/none.desktop");
        roots.hold();
    }

    void run(bool isMeasured)
    {
        clear();
        m_viewModel.setAppToUninstall(m_app);
        UninstallerFlow *flow = m_window.findChild<UninstallerFlow *>();
        if (!flow)
            stop("the uninstaller does not open");
        pause(700); // until the sheet has come
        Round round;
        round.opening.add(m_frames.take(), m_application);
        pause(rest);
        round.still.add(m_frames.take(), m_application);
        {
            Posting posting;
            QObject::connect(flow, &UninstallerFlow::scanStageChanged, flow, [this] { m_frames.post(); });
            clear();
            const double start = now();
            m_roots.letGo();
            waitFor("the scan does not end",
                    [flow] { return flow->stage() == UninstallerFlow::Stage::Review; });
            round.elapsed = now() - start;
            round.scanning.add(m_frames.take(), m_application);
            round.posts = posting.waits;
        }
        pause(700); // until the review has come
        round.coming.add(m_frames.take(), m_application);
        m_rows = flow->itemCount();
        m_viewModel.setAppToUninstall({});
        waitFor("the sheet does not go", [this] { return !m_window.findChild<UninstallerFlow *>(); });
        if (!isMeasured)
            return;
        m_rounds.push_back(std::move(round));
    }

    void print() const
    {
        Round all;
        std::vector<double> elapsed;
        for (const Round &round : m_rounds) {
            for (Phase Round::*phase : {&Round::opening, &Round::still, &Round::scanning, &Round::coming})
                (all.*phase).add(round.*phase);
            Phase::append(all.posts, round.posts);
            elapsed.push_back(round.elapsed);
        }
        std::printf("a scan finds %d rows in %.0f ms\n", m_rows, percentile(elapsed, 0.5));
        all.opening.print("sheet comes");
        all.still.print("no scan");
        all.scanning.print("scanning");
        all.coming.print("review comes");
        const double delivery = percentile(all.posts, 1);
        const double showing = percentile(all.scanning.waits, 1);
        std::printf(
            "a post arrives after %.2f ms, 99th percentile %.2f, at most %.2f; %zu stages were on the screen "
            "%.1f ms later, at most %.1f: together at most %.1f (limit %.1f)\n",
            percentile(all.posts, 0.5), percentile(all.posts, 0.99), delivery, all.scanning.waits.size(),
            percentile(all.scanning.waits, 0.5), showing, delivery + showing, refresh);
    }

private:
    struct Round
    {
        Phase opening; ///< The sheet comes.
        Phase still;   ///< Bar and rings move, nothing is scanned.
        Phase scanning;
        Phase coming; ///< The review comes.
        std::vector<double> posts;
        double elapsed = 0;
    };

    void clear()
    {
        m_frames.take();
        m_application.longest = 0;
    }

    TimedApplication &m_application;
    QuillbayViewModel &m_viewModel;
    QQuickWindow &m_window;
    MadeRoots &m_roots;
    Frames m_frames;
    AppItem m_app;
    int m_rows = 0;
    std::vector<Round> m_rounds;
};

void measure(TimedApplication &application, int rounds)
{
    const QTemporaryDir folder;
    if (!folder.isValid())
        fail("a temporary folder");
    const auto roots = std::make_shared<MadeRoots>(makeHome(QFile::encodeName(folder.path())));
    TestLibrary library;
    QStringList apps;
    for (int i = 0; i < 100; ++i)
        apps.append(QStringLiteral("Application %1:Office").arg(i));
    if (!library.install(apps))
        stop("the library was not scanned");
    ProgramScreens screens(library, roots);
    QQuickWindow &window = screens.show(windowSize);
    Rounds measuring(application, screens.viewModel(), window, *roots);
    measuring.run(false); // reads the home, and makes what is made once
    for (int round = 0; round < rounds; ++round)
        measuring.run(true);
    measuring.print();
    window.hide(); // ends what draws, before what listens to it
}

} // namespace

int main(int argc, char **argv)
{
    const TestHome home;
    const OwnDisplay display(windowSize);
    TimedApplication application(argc, argv);
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    measure(application, argc > 1 ? std::max(1, std::atoi(argv[1])) : 10);
    return EXIT_SUCCESS;
}
