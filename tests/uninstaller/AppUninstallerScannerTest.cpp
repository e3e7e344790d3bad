#include "uninstaller/AppUninstallerScanner.h"

#include "uninstaller/ResidualFixture.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

#include <gmock/gmock.h>

namespace quillbay::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class Scanner : public ::testing::Test
{
protected:
    Scanner()
    {
        tree.useMacLayout();
        tree.folder("~/Applications/Acme.app");
        tree.file("~/Library/Preferences/acme.plist", 600);
        tree.file("~/Library/Caches/acme/x", 1'400);
        tree.file("~/Library/Caches/acme2/x", 2'000);
        app.name = QStringLiteral("Acme");
        app.path = QFile::decodeName(tree.path("~/Applications/Acme.app"));
        make();
    }
    ~Scanner() override
    {
        tree.roots->gate.open();
        QThreadPool::globalInstance()->waitForDone();
    }

    void make()
    {
        scanner = std::make_unique<AppUninstallerScanner>(ResidualSearch{tree.roots, tree.packages});
    }
    bool waitForEnd()
    {
        return QTest::qWaitFor([this] { return !scanner->isScanning(); }, 10'000);
    }

    /// Records every change as it is announced and as it is there.
    void watch()
    {
        const auto record = [this](const QString &text) { log.push_back(text.toStdString()); };
        const AppUninstallerScanner *s = scanner.get();
        QObject::connect(s, &AppUninstallerScanner::residualFilesChanged,
                         [=] { record(QStringLiteral("%1 files").arg(s->residualFiles().size())); });
        QObject::connect(s, &AppUninstallerScanner::scanStageChanged, [=] { record(s->scanStageText()); });
        QObject::connect(s, &AppUninstallerScanner::scanProgressChanged,
                         [=] { record(QString::number(s->scanProgress())); });
        QObject::connect(s, &AppUninstallerScanner::isScanningChanged, [=] {
            record(s->isScanning() ? QStringLiteral("scanning") : QStringLiteral("idle"));
        });
        QObject::connect(s, &AppUninstallerScanner::isSystemAppChanged, [=] {
            record(s->isSystemApp() ? QStringLiteral("system") : QStringLiteral("no system"));
        });
    }

    static std::vector<std::string> steps()
    {
        return {"Locating app bundle…",
                "0.05",
                "Scanning preferences…",
                "0.15",
                "Scanning application support…",
                "0.28",
                "Scanning caches…",
                "0.4",
                "Scanning logs…",
                "0.5",
                "Scanning containers…",
                "0.62",
                "Scanning group containers…",
                "0.7",
                "Scanning launch agents…",
                "0.78",
                "Scanning crash reports…",
                "0.85",
                "Scanning saved state…",
                "0.9",
                "Scanning extensions…",
                "0.94",
                "Scanning receipts…",
                "0.97"};
    }

    MadeTree tree;
    AppItem app;
    std::unique_ptr<AppUninstallerScanner> scanner;
    std::vector<std::string> log;
};

TEST_F(Scanner, PostsItsStepsInOrderAndTheRowsAtOnce)
{
    EXPECT_EQ(scanner->scanStageText(), QStringLiteral("Ready"));
    watch();
    for (const char *before : {"Ready", "Scan complete"}) {
        log.clear();
        scanner->scan(app);
        EXPECT_EQ(scanner->scanStageText(), QLatin1String(before)) << "the stage waits for the first step";
        EXPECT_TRUE(scanner->isScanning() && scanner->residualFiles().isEmpty());
        EXPECT_THAT(log, ElementsAre("0 files", "scanning", "0"));
        ASSERT_TRUE(waitForEnd());
        std::vector<std::string> expected{"0 files", "scanning", "0", "no system"};
        for (const std::string &step : steps())
            expected.push_back(step);
        for (const char *end : {"4 files", "Scan complete", "1", "idle"})
            expected.emplace_back(end);
        EXPECT_EQ(log, expected);
    }
}

TEST_F(Scanner, AnnouncesBeforeItChanges)
{
    int changes = 0;
    double before = -1;
    QObject::connect(scanner.get(), &ObservableObject::objectWillChange, [&] {
        ++changes;
        before = scanner->scanProgress();
    });
    std::vector<double> olds;
    QObject::connect(scanner.get(), &AppUninstallerScanner::scanProgressChanged,
                     [&] { olds.push_back(before); });
    scanner->scan(app);
    ASSERT_TRUE(waitForEnd());
    ASSERT_EQ(olds.size(), 14U);
    EXPECT_EQ(olds[13], 0.97);
    EXPECT_EQ(changes, 3 + 1 + 2 * 12 + 4);
}

TEST_F(Scanner, TellsSystemApplicationsByPathAndByPackage)
{
    app.path = QStringLiteral("/System/Applications/Acme.app");
    scanner->scan(app);
    EXPECT_FALSE(scanner->isSystemApp()) << "posted, not set at once";
    ASSERT_TRUE(waitForEnd());
    EXPECT_TRUE(scanner->isSystemApp());
    EXPECT_FALSE(scanner->residualFiles().isEmpty()) << "scanned like any other";

    ApplicationOwner owner;
    owner.reference = QStringLiteral("x");
    owner.isEssential = true;
    tree.packages.ownerOf = [&](const QByteArray &) { return std::optional(owner); };
    make();
    watch();
    app.path = QStringLiteral("/usr/share/applications/acme.desktop");
    scanner->scan(app);
    ASSERT_TRUE(waitForEnd());
    EXPECT_THAT(log, ::testing::Contains("system").Times(1));
    EXPECT_TRUE(scanner->isSystemApp());
}

TEST_F(Scanner, MayGoDuringAScan)
{
    tree.roots->gate.close();
    for (int i = 0; i < 20; ++i) {
        make();
        watch();
        scanner->scan(app);
        if (i % 2 == 0) {
            ASSERT_TRUE(QTest::qWaitFor([this] { return scanner->scanStage() == ScanStage::bundle; }));
        }
        scanner.reset();
        log.clear();
        tree.roots->gate.open();
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        EXPECT_THAT(log, IsEmpty());
        tree.roots->gate.close();
    }
}

TEST_F(Scanner, ASecondScanTakesThePlaceOfTheFirst)
{
    tree.roots->gate.close();
    scanner->scan(app);
    ASSERT_TRUE(QTest::qWaitFor([this] { return scanner->scanStage() == ScanStage::bundle; }));
    watch();
    app.name = QStringLiteral("acme2");
    scanner->scan(app);
    tree.roots->gate.open();
    ASSERT_TRUE(waitForEnd());
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    EXPECT_THAT(log, ::testing::Contains("Scan complete").Times(1));
    EXPECT_EQ(scanner->residualFiles().size(), 2);
    EXPECT_EQ(scanner->residualFiles().last().displayName, QStringLiteral("acme2"));
}

class Selection : public Scanner
{
protected:
    Selection()
    {
        scanner->scan(app);
        EXPECT_TRUE(waitForEnd());
    }
    QStringList selected() const
    {
        QStringList names;
        for (const AppResidualFile &file : scanner->selectedFiles())
            names += file.displayName;
        EXPECT_EQ(names.size(), scanner->selectedCount());
        return names;
    }
    AppResidualFile row(const char *name) const
    {
        for (const AppResidualFile &file : scanner->residualFiles()) {
            if (file.displayName == QLatin1String(name))
                return file;
        }
        ADD_FAILURE() << "no row " << name;
        return {};
    }
};

TEST_F(Selection, ByRowByCategoryAndAll)
{
    using enum ResidualCategory;
    EXPECT_EQ(selected().size(), 4);
    EXPECT_EQ(scanner->formattedTotalSize(), QStringLiteral("4 KB"));
    EXPECT_TRUE(scanner->isAllSelected(caches));
    EXPECT_FALSE(scanner->isAllSelected(other)) << "a category without rows";

    const QSignalSpy changes(scanner.get(), &AppUninstallerScanner::residualFilesChanged);
    scanner->toggleSelection(row("acme2"));
    EXPECT_EQ(changes.size(), 1);
    EXPECT_FALSE(scanner->isAllSelected(caches));
    EXPECT_EQ(scanner->formattedTotalSize(), QStringLiteral("2 KB"));
    scanner->deselectAll(caches);
    EXPECT_EQ(selected(), QStringList({QStringLiteral("Acme.app"), QStringLiteral("acme.plist")}));
    EXPECT_EQ(scanner->formattedTotalSize(), QStringLiteral("600 bytes"));
    scanner->deselectAll();
    EXPECT_THAT(selected(), IsEmpty());
    EXPECT_EQ(scanner->formattedTotalSize(), QStringLiteral("Zero KB"));
    scanner->selectAll(caches);
    EXPECT_EQ(selected().size(), 2);
    scanner->selectAll();
    EXPECT_EQ(selected().size(), 4);

    const auto groups = scanner->filesByCategory();
    EXPECT_THAT(groups.keys(), UnorderedElementsAre(appBundle, preferences, caches));
    QList<AppResidualFile> joined;
    for (const ResidualCategory category : allResidualCategories)
        joined += groups.value(category);
    EXPECT_EQ(joined, scanner->residualFiles());
}

TEST_F(Selection, RemovedRowsAreGoneByPath)
{
    const AppResidualFile cache = row("acme2");
    scanner->removeRows({cache.path, "/nowhere"});
    EXPECT_EQ(scanner->residualFiles().size(), 3);
    const QList<AppResidualFile> before = scanner->residualFiles();
    scanner->toggleSelection(cache);
    EXPECT_EQ(scanner->residualFiles(), before);

    tree.file("~/Library/Logs/acme.log");
    ApplicationOwner owner;
    owner.reference = QStringLiteral("acme:amd64");
    owner.isRemovable = false;
    tree.packages.ownerOf = [&](const QByteArray &) { return std::optional(owner); };
    make();
    scanner->scan(app);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(scanner->residualFiles().size(), 6) << "the log comes twice";
    EXPECT_FALSE(scanner->residualFiles().first().isSelected);
    scanner->selectAll();
    EXPECT_EQ(scanner->selectedCount(), 6) << "what the user may not delete is selected all the same";
    scanner->removeRows({row("acme.log").path, QByteArray()});
    EXPECT_EQ(scanner->residualFiles().size(), 4);
    scanner->removeRows({}, {owner.reference});
    EXPECT_EQ(scanner->residualFiles().size(), 3);
}

TEST(ResidualCategory, LooksAreThoseOfTheirCategory)
{
    std::set<QString> names;
    for (const ResidualCategory category : allResidualCategories)
        names.insert(rawValue(category));
    EXPECT_EQ(names.size(), 13U);
    for (const ScanStep &step : scanSteps)
        EXPECT_EQ(int(step.stage), 1 + int(step.category)) << "a step for each category, in their order";
    EXPECT_EQ(rawValue(ResidualCategory::launchAgents), QStringLiteral("Launch Agents & Daemons"));
    EXPECT_EQ(systemIconName(ResidualCategory::savedState),
              QStringLiteral("externaldrive.badge.timemachine"));
    EXPECT_EQ(accentColor(ResidualCategory::groupContainers), accentColor(ResidualCategory::containers));
    EXPECT_EQ(accentColor(ResidualCategory::other), QStringLiteral("#8E8E93"));
}

} // namespace

} // namespace quillbay::testing
