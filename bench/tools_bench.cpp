// What a key typed in a sticky note costs the main thread, and another workspace's notes: tools_bench
// [ROUNDS]
//
// Types letters into the open popover. A key's time is that of its event, from the window's to the editor's,
// the note's and the written list. In turns with it, as the floor: SQLite alone writes the same bytes, to a
// database of the same kind beside the preferences. Then goes between two workspaces with as many notes, the
// popover open.

#include "app/QuillbayViewModel.h"
#include "foundation/Database.h"
#include "library/AppIconLoader.h"
#include "support/FakeDesktop.h"
#include "support/TestHome.h"
#include "support/TestLibrary.h"
#include "tools/Tools.h"
#include "ui/Screens.h"
#include "ui/vocabulary/Theme.h"
#include "uninstaller/Uninstaller.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

#include <sqlite3.h>

using namespace quillbay;
using namespace quillbay::testing;

namespace {

[[noreturn]] void stop(const char *why)
{
    std::fprintf(stderr, "tools_bench: %s\n", why);
    std::exit(EXIT_FAILURE);
}

double milliseconds(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

struct Times
{
    std::vector<double> elapsed;
    std::vector<double> processor;

    void take(const std::function<void()> &call)
    {
        const double cpu = milliseconds(CLOCK_THREAD_CPUTIME_ID);
        const double start = milliseconds(CLOCK_MONOTONIC);
        call();
        elapsed.push_back(milliseconds(CLOCK_MONOTONIC) - start);
        processor.push_back(milliseconds(CLOCK_THREAD_CPUTIME_ID) - cpu);
    }
};

double part(std::vector<double> values, size_t percent)
{
    std::sort(values.begin(), values.end());
    return values[(values.size() - 1) * percent / 100];
}

/// A database such as the preferences are, and nothing around it.
class Floor
{
public:
    explicit Floor(const QString &path)
    {
        if (!m_database.open(path, Database::Mode::Create) ||
            !m_database.execute("PRAGMA page_size = 16384; PRAGMA journal_mode = WAL;"
                                "PRAGMA synchronous = NORMAL;"
                                "CREATE TABLE floor(key TEXT PRIMARY KEY, value BLOB)"))
            stop("no database");
        const char *const sql = "INSERT INTO floor VALUES('notes', ?1)"
                                " ON CONFLICT(key) DO UPDATE SET value = excluded.value";
        if (sqlite3_prepare_v2(m_database.handle(), sql, -1, &m_write, nullptr) != SQLITE_OK)
            stop("no statement");
    }
    ~Floor() { sqlite3_finalize(m_write); }
    Floor(const Floor &) = delete;
    Floor &operator=(const Floor &) = delete;

    void write(const QByteArray &bytes)
    {
        sqlite3_bind_blob64(m_write, 1, bytes.constData(), sqlite3_uint64(bytes.size()), SQLITE_STATIC);
        if (sqlite3_step(m_write) != SQLITE_DONE || sqlite3_reset(m_write) != SQLITE_OK)
            stop("the database cannot be written");
    }

private:
    Database m_database;
    sqlite3_stmt *m_write = nullptr;
};

/// The screens over the fakes, with the notes open.
class Stage
{
public:
    Stage()
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport Quillbay.Ui\n"
                          "Window { width: 600; height: 500; visible: true\n"
                          "Item { id: place } StickyNotesPopoverView { parent: place; visible: true } }",
                          {});
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        if (!m_window)
            stop(qPrintable(component.errorString()));
        m_window->requestActivate();
        if (!QTest::qWaitForWindowActive(m_window.get()))
            stop("no window");
    }
    ~Stage() { AppIconLoader::shutDown(); }

    WorkspaceStorage &storage() { return m_tools.storage(); }
    QByteArray stored() const
    {
        return library.preferences.data(library.workspaces->key(QStringLiteral("quillbay_sticky_notes")))
            .value_or(QByteArray());
    }
    void press(Qt::Key key, const QString &text = {})
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(m_window.get(), &down);
        QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(m_window.get(), &up);
    }

    TestLibrary library;

private:
    FakeAppearance m_appearance;
    FakeWindowEffects m_effects;
    Theme m_theme{m_appearance, m_effects};
    QuillbayViewModel m_viewModel{*library.finder, *library.fakes.launcher, *library.fakes.biometrics,
                                  library.preferences};
    AdminPrivileges m_admin{*library.fakes.elevation};
    Uninstaller m_uninstaller{{nullptr,
                               nullptr,
                               {},
                               *library.fakes.fileRemoval,
                               *library.fakes.trash,
                               m_admin,
                               *library.fakes.fullDiskAccess,
                               library.home.path()}};
    Tools m_tools{library.preferences, *library.workspaces, library.notifications,
                  *library.fakes.colorSampler, *library.fakes.windowEffects};
    ScreenModels m_models{m_viewModel, *library.workspaces, library.notifications, m_uninstaller, m_tools};
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

QList<StickyNote> madeNotes(int count, int length)
{
    const QString line =
        QStringLiteral("The harbour lights were lit when the last ferry came in, said \"Öla\".\n");
    QList<StickyNote> notes;
    for (int i = 0; i < count; ++i)
        notes.append({QUuid::createUuid(), line.repeated(length / int(line.size()) + 1).first(length),
                      QStringLiteral("#FFD60A")});
    return notes;
}

void measure(Stage &stage, int count, int length, int rounds, double limit, double ratioLimit)
{
    stage.storage().setStickyNotes(madeNotes(count, length));
    stage.storage().saveNotes();
    QCoreApplication::processEvents();
    Floor floor(stage.library.home.filePath(QStringLiteral("floor%1.sqlite").arg(count)));
    Times keys;
    Times writes;
    const QString first = stage.storage().stickyNotes().first().text;
    for (int round = 0; round < rounds; ++round) {
        keys.take([&] { stage.press(Qt::Key_A, QStringLiteral("a")); });
        QCoreApplication::processEvents();
        const QByteArray bytes = stage.stored();
        writes.take([&] { floor.write(bytes); });
    }
    if (stage.storage().stickyNotes().first().text.size() != first.size() + rounds)
        stop("the keys have not come to the note");
    const double key = part(keys.elapsed, 50);
    const double write = part(writes.elapsed, 50);
    std::printf(
        "%3d notes of %2d kB: a key median %.2f ms, 95th percentile %.2f, longest %.2f, processor %.2f",
        count, length / 1000, key, part(keys.elapsed, 95), part(keys.elapsed, 100), part(keys.processor, 50));
    if (limit > 0)
        std::printf("   (limit %.0f)", limit);
    std::printf(
        "\n    SQLite alone median %.2f ms, 95th percentile %.2f, longest %.2f, processor %.2f; ratio %.2f",
        write, part(writes.elapsed, 95), part(writes.elapsed, 100), part(writes.processor, 50), key / write);
    if (ratioLimit > 0)
        std::printf("   (limit %.1f)", ratioLimit);
    std::printf("\n");
}

void measureSwitch(Stage &stage, int count, int length, int rounds)
{
    WorkspaceManager &workspaces = *stage.library.workspaces;
    const QUuid first = workspaces.activeWorkspaceID();
    workspaces.createWorkspace(QStringLiteral("Other"), {}, {});
    const QUuid second = workspaces.activeWorkspaceID();
    stage.storage().setStickyNotes(madeNotes(count, length));
    stage.storage().saveNotes();
    Times switches;
    for (int round = 0; round < rounds; ++round) {
        QCoreApplication::processEvents();
        switches.take([&] { workspaces.setActiveWorkspaceID(round % 2 == 0 ? first : second); });
    }
    std::printf("to a workspace with %d notes of %d kB: median %.2f ms, longest %.2f   (limit 16)\n", count,
                length / 1000, part(switches.elapsed, 50), part(switches.elapsed, 100));
}

} // namespace

int main(int argc, char **argv)
{
    const TestHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
    QGuiApplication application(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200;
    Stage stage;
    measure(stage, 50, 2000, rounds, 4, 0);
    measure(stage, 200, 10000, rounds, 0, 1.5);
    measureSwitch(stage, 200, 10000, rounds);
    return EXIT_SUCCESS;
}
