// What a frame of the screens costs: frames_bench [ROUNDS [PART]]
//
// PART is one of scrolling, typing, modal, workspaces and cards; all of them without it.
//
// The program's window, 1440 by 900, over 1,000 made applications in four categories and two workspaces,
// drawn by OpenGL on an X server of its own where there is no display. Everything of a frame happens on one
// thread: the change itself, delegates, polishing, synchronising, drawing, swapping. A frame's time is all
// that the thread does from the change, or from the frame before, to the end of the frame; waiting for events
// does not count.
//
// The floor, in the same window with nothing else in it: a bare grid of the same pictures in the same
// columns.

#include "bench/FrameMeter.h"
#include "bench/OwnDisplay.h"
#include "bench/ProgramScreens.h"
#include "support/TestHome.h"
#include "support/TestLibrary.h"
#include "ui/QmlSingletons.h"

#include <QAbstractListModel>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStyleHints>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace quillbay;
using namespace quillbay::testing;

namespace {

constexpr QSize windowSize(1440, 900);
constexpr int applicationCount = 1000;
constexpr int modalCount = 300;
constexpr int folderCount = 20;
constexpr int memberCount = 12;
constexpr int iconEdge = 80;
constexpr int scrollStep = 40;
constexpr int warmUpStep = 500;        ///< Less than the grid's height: passes by no tile.
constexpr double limit = 2;            ///< Times the floor's 99th percentile.
constexpr double refresh = 1000 / 60.; ///< Milliseconds.
const char *const query = "marin";

const char *const floorScreen = R"(
import QtQuick
import Quillbay.Ui

Item {
    id: root

    required property var pictures
    required property var modalPictures
    property alias grid: grid
    property bool open: false

    GridView {
        id: grid
        anchors.fill: parent
        clip: true
        reuseItems: true
        cacheBuffer: 0
        boundsBehavior: Flickable.StopAtBounds
        model: root.pictures
        delegate: PictureItem {
            required picture
            width: 80
            height: 80
        }
    }
    Loader {
        anchors.centerIn: parent
        width: 700
        height: 400
        active: root.open
        sourceComponent: GridView {
            clip: true
            reuseItems: true
            cacheBuffer: 0
            cellWidth: 134
            cellHeight: 172
            model: root.modalPictures
            delegate: PictureItem {
                required picture
                width: 80
                height: 80
            }
            NumberAnimation on opacity {
                from: 0
                to: 1
                duration: 250
            }
        }
    }
})";

/// The floor's model: a picture each, replaced all at once.
class Pictures final : public QAbstractListModel
{
public:
    void show(const QList<QImage> &images)
    {
        beginResetModel();
        m_images = images;
        endResetModel();
    }
    int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : int(m_images.size());
    }
    QVariant data(const QModelIndex &index, int) const override { return m_images[index.row()]; }
    QHash<int, QByteArray> roleNames() const override { return {{Qt::UserRole, "picture"}}; }

private:
    QList<QImage> m_images;
};

/// Every name is made of three syllables; Office has as many as the modal shows.
QStringList madeApplications()
{
    static const std::array<const char *, 10> syllables = {"ma", "rin", "go", "tel", "sun",
                                                           "vi", "pa",  "lo", "ker", "du"};
    QStringList made;
    for (int i = 0; i < applicationCount; ++i) {
        const char *category = i % 10 < 3   ? "Office"
                               : i % 10 < 6 ? "Games"
                               : i % 10 < 8 ? "Graphics"
                                            : "System";
        made.append(QStringLiteral("%1%2%3:%4")
                        .arg(QLatin1String(syllables[size_t(i / 100)]),
                             QLatin1String(syllables[size_t(i / 10 % 10)]),
                             QLatin1String(syllables[size_t(i % 10)]), QLatin1String(category)));
    }
    return made;
}

[[noreturn]] void stop(const char *why)
{
    std::fprintf(stderr, "frames_bench: %s\n", why);
    std::exit(EXIT_FAILURE);
}

/// Two workspaces, each with folders of its own.
void fill(TestLibrary &library)
{
    library.workspaces->createWorkspace(QStringLiteral("Second"), QStringLiteral("folder"), {});
    for (const Workspace &workspace : QList<Workspace>(library.workspaces->workspaces())) {
        library.workspaces->setActiveWorkspaceID(workspace.id);
        for (int i = 0; i < folderCount; ++i) {
            library.finder->createFolder(QStringLiteral("%1 %2").arg(workspace.name).arg(i),
                                         QStringLiteral("folder"), QStringLiteral("#007AFF"));
            const AppFolder folder = library.finder->folders().first();
            for (int member = 0; member < memberCount; ++member)
                library.finder->addAppToFolder(
                    library.finder->apps()[(i * 37 + member * 29) % applicationCount], folder);
        }
    }
}

QQuickItem *find(QQuickItem *item, const char *type)
{
    if (QByteArrayView(item->metaObject()->className()).startsWith(type))
        return item;
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = find(child, type))
            return found;
    }
    return nullptr;
}

QByteArray rendererName()
{
    QOpenGLContext context;
    QOffscreenSurface surface;
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface))
        stop("there is no OpenGL");
    return reinterpret_cast<const char *>(context.functions()->glGetString(GL_RENDERER));
}

double percentile(const std::vector<double> &sorted, double part)
{
    return sorted[size_t(std::ceil(part * double(sorted.size()))) - 1];
}

/// The frames' times of one kind, floor and program in turns. A machine that others use stalls now and then:
/// each round has a percentile of its own, and their median counts.
class Times
{
public:
    void add(bool program, std::vector<double> round)
    {
        if (round.empty())
            stop("there were no frames");
        std::sort(round.begin(), round.end());
        m_middle[program].push_back(percentile(round, 0.5));
        m_most[program].push_back(percentile(round, 0.99));
    }

    void print(const char *title, bool isSoftware)
    {
        for (std::vector<double> *rounds : {&m_middle[0], &m_middle[1], &m_most[0], &m_most[1]})
            std::sort(rounds->begin(), rounds->end());
        const double floor = percentile(m_most[0], 0.5);
        const double program = percentile(m_most[1], 0.5);
        std::printf("%-34s floor %6.2f, %6.2f   program %6.2f, %6.2f   ratio %.2f (limit %.0f), %zu rounds",
                    title, percentile(m_middle[0], 0.5), floor, percentile(m_middle[1], 0.5), program,
                    program / floor, limit, m_most[1].size());
        if (!isSoftware)
            std::printf("; %s 16.7 ms", program <= refresh ? "within" : "over");
        std::printf("\n");
        std::fflush(stdout);
    }

private:
    std::array<std::vector<double>, 2> m_middle;
    std::array<std::vector<double>, 2> m_most;
};

/// The window, showing either the program or the floor.
class Stage
{
public:
    Stage(TestLibrary &library, QQuickWindow &window)
        : m_library(library)
        , m_window(window)
        , m_meter(window)
        , m_tiles(find(window.contentItem(), "TileGrid"))
    {
        if (!m_tiles)
            stop("there is no grid of tiles");
        m_meter.change([] {}); // until everything has its place
        m_allIcons = icons(*ViewModelSingleton::instance->filteredApps());
        m_pictures.show(m_allIcons);
        m_modalPictures.show(m_allIcons.mid(0, modalCount));
        QQmlComponent component(qmlEngine(m_tiles));
        component.setData(floorScreen, {});
        m_floor = qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("pictures"), QVariant::fromValue(&m_pictures)},
             {QStringLiteral("modalPictures"), QVariant::fromValue(&m_modalPictures)}}));
        if (!m_floor)
            stop(qPrintable(component.errorString()));
        m_floorGrid = m_floor->property("grid").value<QQuickItem *>();
        for (const char *same :
             {"cellWidth", "cellHeight", "leftMargin", "rightMargin", "topMargin", "bottomMargin"})
            m_floorGrid->setProperty(same, m_tiles->property(same));
        m_floor->setParent(&window);
        m_floor->setPosition(m_tiles->mapToScene({}));
        m_floor->setSize(m_tiles->size());
        m_floor->setVisible(false);
        m_programItems = window.contentItem()->childItems();
        m_floor->setParentItem(window.contentItem());
    }

    void warmUp()
    {
        // Every icon is asked for on the way, and read when all have been answered.
        for (int sweep = 0; sweep < 2; ++sweep)
            scroll(m_tiles, warmUpStep);
        if (QStringList asked = m_library.fakes.icons->askedPaths();
            asked.removeDuplicates(), asked.size() < applicationCount)
            stop("not every icon was read");
        for (const bool program : {false, true}) {
            show(program);
            scroll(program ? m_tiles : m_floorGrid, warmUpStep);
        }
    }

    void measureScrolling(int rounds, bool isSoftware)
    {
        Times times;
        for (int round = 0; round < std::max(3, rounds / 3); ++round)
            inTurns([&](bool program) { times.add(program, scroll(program ? m_tiles : m_floorGrid)); });
        times.print("scrolling 1,000 tiles", isSoftware);
    }

    void measureModal(int rounds, bool isSoftware)
    {
        Times times;
        int opened = 0;
        const auto round = [&](bool program) {
            const bool isOther = program && ++opened % 2; // not the one that was closed
            ExpandedCard &card = *ExpandedCardSingleton::instance;
            const std::vector<double> frames = m_meter.change([&] {
                if (program)
                    card.expandCategory(isOther ? QStringLiteral("Office") : QStringLiteral("Games"));
                else
                    m_floor->setProperty("open", true);
            });
            if (program && (!card.isExpanded() || card.apps()->rowCount() != modalCount))
                stop("the modal does not show what it should");
            m_meter.change([&] {
                m_floor->setProperty("open", false);
                card.close();
            });
            return frames;
        };
        inTurns(round); // makes what is made once
        inTurns(round);
        for (int i = 0; i < rounds; ++i)
            inTurns([&](bool program) { times.add(program, round(program)); });
        times.print("opening a modal of 300", isSoftware);
    }

    void measureTyping(int rounds, bool isSoftware)
    {
        Times times;
        std::vector<QList<QImage>> results; // what each key gives
        const auto type = [&](bool program) {
            std::vector<double> longest;
            for (size_t key = 0; key < 10; ++key) {
                const std::vector<double> frames = m_meter.change([&] {
                    if (program)
                        press(key < 5 ? query[key] : '\b');
                    else
                        m_pictures.show(results[key]);
                });
                longest.push_back(*std::max_element(frames.begin(), frames.end()));
                if (program && results.size() < 10)
                    results.push_back(icons(*ViewModelSingleton::instance->filteredApps()));
            }
            return longest;
        };
        show(true);
        type(true);
        if (results[4].isEmpty() || results[4].size() >= results[0].size() ||
            results[9].size() != applicationCount)
            stop("the search field does not search");
        for (int i = 0; i < rounds; ++i)
            inTurns([&](bool program) { times.add(program, type(program)); });
        m_pictures.show(m_allIcons);
        times.print("a letter typed or taken back", isSoftware);
    }

    void measureWorkspaces(const char *title, int rounds, bool isSoftware)
    {
        Times times;
        QList<QImage> others = m_allIcons;
        std::reverse(others.begin(), others.end());
        const auto switchTo = [&](bool program, qsizetype which) {
            const std::vector<double> frames = m_meter.change([&] {
                if (program)
                    m_library.workspaces->setActiveWorkspaceID(m_library.workspaces->workspaces()[which].id);
                else
                    m_pictures.show(which ? others : m_allIcons);
            });
            return *std::max_element(frames.begin(), frames.end());
        };
        for (int i = 0; i <= rounds; ++i) {
            inTurns([&](bool program) {
                const std::vector<double> longest{switchTo(program, 1), switchTo(program, 0)};
                if (i > 0)
                    times.add(program, longest);
            });
        }
        times.print(title, isSoftware);
    }

private:
    void inTurns(const std::function<void(bool)> &measure)
    {
        for (const bool program : {false, true}) {
            show(program);
            measure(program);
        }
    }

    void show(bool program)
    {
        m_meter.change([&] {
            m_floor->setVisible(!program);
            for (QQuickItem *item : m_programItems)
                item->setVisible(program);
            if (program)
                ViewModelSingleton::instance->setSearchFocusTrigger(
                    !ViewModelSingleton::instance->searchFocusTrigger());
        });
    }

    /// From one end to the other.
    std::vector<double> scroll(QQuickItem *grid, int step = scrollStep)
    {
        const double top = grid->property("originY").toDouble() - grid->property("topMargin").toDouble();
        const double end = top + grid->property("contentHeight").toDouble() +
                           grid->property("topMargin").toDouble() - grid->height();
        if (end - top < 100 * scrollStep)
            stop("there is nothing to scroll");
        std::vector<double> times;
        m_meter.change([&] { grid->setProperty("contentY", top); });
        for (double y = top; y < end; y += step)
            times.push_back(m_meter.frame([&] { grid->setProperty("contentY", y); }));
        return times;
    }

    void press(char key)
    {
        const bool isLetter = key != '\b';
        const QString text = isLetter ? QString(QLatin1Char(key)) : QString();
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, isLetter ? Qt::Key_A + key - 'a' : Qt::Key_Backspace, {}, text);
            QCoreApplication::sendEvent(&m_window, &event);
        }
    }

    QList<QImage> icons(const AppListModel &apps)
    {
        QList<QImage> images;
        for (int row = 0; row < apps.rowCount(); ++row) {
            const QString path = apps.data(apps.index(row), apps.roleNames().key("path")).toString();
            QImage &image = m_images[path];
            if (image.isNull())
                image = m_library.fakes.icons->icon(path, iconEdge);
            images.append(image);
        }
        return images;
    }

    TestLibrary &m_library;
    QQuickWindow &m_window;
    FrameMeter m_meter;
    QQuickItem *m_tiles;
    QList<QQuickItem *> m_programItems;
    QHash<QString, QImage> m_images;
    QList<QImage> m_allIcons;
    Pictures m_pictures;
    Pictures m_modalPictures;
    QQuickItem *m_floor = nullptr;
    QQuickItem *m_floorGrid = nullptr;
};

void measure(int rounds, QByteArrayView part)
{
    const QByteArray renderer = rendererName();
    const bool isSoftware = renderer.contains("llvmpipe") || renderer.contains("softpipe");
    TestLibrary library;
    if (!library.install(madeApplications()))
        stop("the library was not scanned");
    fill(library);
    library.workspaces->setActiveWorkspaceID(library.workspaces->workspaces().first().id);
    ProgramScreens screens(library);
    QQuickWindow &window = screens.show(windowSize);
    Stage stage(library, window);
    std::printf("Drawn by %s, %d by %d; milliseconds, median and 99th percentile\n", renderer.constData(),
                window.width(), window.height());
    stage.warmUp();
    const auto wants = [part](const char *name) { return part.isEmpty() || part == name; };
    if (wants("scrolling"))
        stage.measureScrolling(rounds, isSoftware);
    if (wants("typing"))
        stage.measureTyping(rounds, isSoftware);
    if (wants("modal"))
        stage.measureModal(rounds, isSoftware);
    if (wants("workspaces"))
        stage.measureWorkspaces("a workspace switched, by name", rounds, isSoftware);
    if (wants("cards")) {
        LibrarySingleton::instance->setSortOption(QStringLiteral("Category"));
        stage.measureWorkspaces("a workspace switched, with cards", rounds, isSoftware);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const TestHome home;
    const OwnDisplay display(windowSize);
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setSwapInterval(0); // the work of a frame, not the screen's beat
    QSurfaceFormat::setDefaultFormat(format);
    MeteredApplication application(argc, argv);
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    measure(argc > 1 ? std::max(1, std::atoi(argv[1])) : 15, argc > 2 ? argv[2] : "");
    return EXIT_SUCCESS;
}
