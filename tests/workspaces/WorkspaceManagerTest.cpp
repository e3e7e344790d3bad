#include "workspaces/WorkspaceManager.h"

#include "foundation/NotificationCenter.h"
#include "foundation/Uuid.h"

#include <QTemporaryDir>

#include <memory>

#include <gtest/gtest.h>

using namespace quillbay;

namespace {

const QString listKey = QStringLiteral("quillbay_workspaces");
const QString activeKey = QStringLiteral("quillbay_active_workspace_id");
const QString seedID = QStringLiteral("D3B07384-D113-4E4E-A343-A33A0A26F3D3");
const QUuid idA(QStringLiteral("{0000000a-0000-4000-8000-00000000000a}"));
const QUuid idB(QStringLiteral("{0000000b-0000-4000-8000-00000000000b}"));
const QString dataKeys[] = {QStringLiteral("AppFolders"), QStringLiteral("quillbay_sticky_notes"),
                            QStringLiteral("quillbay_code_snippets")};
const QString arrayKeys[] = {QStringLiteral("recentApps"), QStringLiteral("favoriteApps"),
                             QStringLiteral("unifiedGridOrder")};
const QString keptKeys[] = {QStringLiteral("quillbay_recent_colors"),
                            QStringLiteral("quillbay_recent_measurements")};

Workspace workspace(const QUuid &id, const QString &name)
{
    return {id, name, QStringLiteral("star"), QStringLiteral("#FF0000")};
}

QString keyOf(const QString &base, const QUuid &id)
{
    return base + QLatin1Char('_') + uuidString(id);
}

class WorkspaceManagerTest : public ::testing::Test
{
protected:
    WorkspaceManagerTest()
    {
        QObject::connect(&notifications, &NotificationCenter::quillbayWorkspaceChanged, [this] {
            const QString stored = preferences.string(activeKey).value_or(QString());
            log.append(stored == uuidString(manager->activeWorkspaceID()) ? stored : QStringLiteral("?"));
        });
    }

    void store(const QList<Workspace> &list) { preferences.setData(listKey, encodeWorkspaces(list)); }
    void start() { manager = std::make_unique<WorkspaceManager>(preferences, notifications); }
    QString storedNames() const
    {
        const auto stored = decodeWorkspaces(preferences.data(listKey).value_or(QByteArray()));
        QStringList names;
        for (const Workspace &entry : decodedValue(stored) ? *decodedValue(stored) : QList<Workspace>())
            names.append(entry.name);
        return names.join(QLatin1Char(' '));
    }

    QTemporaryDir folder;
    PreferenceStore preferences{folder.filePath(QStringLiteral("preferences.sqlite"))};
    NotificationCenter notifications;
    std::unique_ptr<WorkspaceManager> manager;
    QStringList log; ///< The stored identifier at each notification; "?" where another one is active.
};

} // namespace

TEST_F(WorkspaceManagerTest, BeginsWithOneDefaultThatIsInMemoryOnly)
{
    start();
    const QList<Workspace> expected{{QUuid(seedID), QStringLiteral("Default"),
                                     QStringLiteral("briefcase.fill"), QStringLiteral("#007AFF")}};
    EXPECT_EQ(manager->workspaces(), expected);
    EXPECT_EQ(manager->key(QStringLiteral("AppFolders")), QStringLiteral("AppFolders_") + seedID);
    EXPECT_EQ(preferences.data(listKey), std::nullopt);
    EXPECT_EQ(preferences.string(activeKey), std::nullopt);
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(WorkspaceManagerTest, TheActiveOneIsTheStoredOneIfThereIsSuchElseTheFirst)
{
    store({workspace(idA, QStringLiteral("A")), workspace(idB, QStringLiteral("B"))});
    const std::pair<QString, QUuid> cases[] = {{uuidString(idB), idB},
                                               {uuidString(idB).toLower(), idB},
                                               {seedID, idA},
                                               {QStringLiteral("no identifier"), idA}};
    for (const auto &[text, active] : cases) {
        preferences.setString(activeKey, text);
        start();
        EXPECT_EQ(manager->activeWorkspaceID(), active) << qUtf8Printable(text);
        EXPECT_EQ(preferences.string(activeKey), text) << "not written back";
    }
    preferences.setData(activeKey, uuidString(idB).toUtf8());
    start();
    EXPECT_EQ(manager->activeWorkspaceID(), idA);
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(WorkspaceManagerTest, TakesOverOlderValuesWhereNoListCanBeRead)
{
    const QUuid seed(seedID);
    for (const QString &key : dataKeys)
        preferences.setData(key, "old");
    preferences.setStringArray(arrayKeys[0], {QStringLiteral("old")});
    preferences.setString(arrayKeys[1], QStringLiteral("another type"));
    preferences.setStringArray(keptKeys[0], {QStringLiteral("not taken over")});
    const QByteArray valid = encodeWorkspaces({workspace(idA, QStringLiteral("A"))});
    QByteArray incomplete = valid;
    incomplete.replace("color", "colour");
    for (const QByteArray &damaged : {QByteArray(), QByteArray("{}"), incomplete, valid.chopped(1)}) {
        preferences.setData(listKey, damaged);
        preferences.setData(keyOf(dataKeys[0], seed), "newer, and lost");
        preferences.setStringArray(keyOf(arrayKeys[2], seed), {QStringLiteral("stays")});
        start();
        EXPECT_EQ(manager->activeWorkspaceID(), seed);
        for (const QString &key : dataKeys) {
            EXPECT_EQ(preferences.data(keyOf(key, seed)), "old") << qUtf8Printable(key);
            EXPECT_EQ(preferences.data(key), "old") << "the old one stays too";
        }
        EXPECT_EQ(preferences.stringArray(keyOf(arrayKeys[0], seed)), QStringList(QStringLiteral("old")));
        EXPECT_EQ(preferences.stringArray(keyOf(arrayKeys[1], seed)), std::nullopt);
        EXPECT_EQ(preferences.stringArray(keyOf(arrayKeys[2], seed)), QStringList(QStringLiteral("stays")));
        EXPECT_EQ(preferences.stringArray(keyOf(keptKeys[0], seed)), std::nullopt);
        EXPECT_EQ(preferences.data(listKey), damaged) << "not written back";
    }
}

TEST_F(WorkspaceManagerTest, AnEmptyListIsAListOfNone)
{
    preferences.setData(dataKeys[0], "old");
    store({});
    start();
    EXPECT_TRUE(manager->workspaces().isEmpty());
    const QUuid active = manager->activeWorkspaceID();
    EXPECT_FALSE(active.isNull());
    EXPECT_EQ(preferences.data(keyOf(dataKeys[0], active)), std::nullopt);
    start();
    EXPECT_NE(manager->activeWorkspaceID(), active);
}

TEST_F(WorkspaceManagerTest, ANewOneIsStoredAndEntered)
{
    start();
    manager->createWorkspace(QStringLiteral(" a "), QStringLiteral("i"), QString());
    const Workspace made = manager->workspaces().last();
    EXPECT_EQ(made, (Workspace{made.id, QStringLiteral(" a "), QStringLiteral("i"), QString()}));
    EXPECT_EQ(log, QStringList(uuidString(made.id)));
    const QList<Workspace> before = manager->workspaces();
    start();
    EXPECT_EQ(manager->workspaces(), before);
    EXPECT_EQ(manager->activeWorkspaceID(), made.id);
}

TEST_F(WorkspaceManagerTest, AChangeSetsOneTextAfterTheOtherAndReloadsTheActiveOne)
{
    store({workspace(idA, QStringLiteral("A")), workspace(idB, QStringLiteral("B"))});
    start();
    QStringList states;
    QObject::connect(manager.get(), &WorkspaceManager::workspacesChanged, [&] {
        const Workspace &b = manager->workspaces().last();
        states.append(b.name + b.icon + b.color);
    });
    manager->updateWorkspace(workspace(idB, QStringLiteral("old")), QStringLiteral("n"), QStringLiteral("i"),
                             QStringLiteral("c"));
    EXPECT_EQ(states.join(QLatin1Char(' ')), QStringLiteral("nstar#FF0000 ni#FF0000 nic"));
    EXPECT_EQ(storedNames(), QStringLiteral("A n"));
    EXPECT_TRUE(log.isEmpty()) << "not the active one";

    const QList<Workspace> before = manager->workspaces();
    store({});
    const Workspace &active = manager->workspaces().first();
    manager->updateWorkspace(active, active.name, active.icon, active.color);
    EXPECT_EQ(manager->workspaces(), before);
    EXPECT_EQ(storedNames(), QStringLiteral("A n"));
    EXPECT_EQ(log, QStringList(uuidString(idA)));

    manager->updateWorkspace(workspace(QUuid(seedID), QString()), {}, {}, {});
    EXPECT_EQ(manager->workspaces(), before);
    EXPECT_EQ(log.size(), 1);
}

TEST_F(WorkspaceManagerTest, DeletionLeavesTheWorkspaceFirstAndThenTakesItsValues)
{
    store({workspace(idA, QStringLiteral("A")), workspace(idB, QStringLiteral("B")),
           workspace(QUuid(seedID), QStringLiteral("C"))});
    preferences.setString(activeKey, uuidString(idB));
    start();
    for (const QUuid &id : {idA, idB}) {
        for (const QString &key : dataKeys)
            preferences.setData(keyOf(key, id), "x");
        for (const QString &key : arrayKeys)
            preferences.setStringArray(keyOf(key, id), {});
        for (const QString &key : keptKeys)
            preferences.setStringArray(keyOf(key, id), {});
    }
    bool wasThere = false;
    QObject::connect(&notifications, &NotificationCenter::quillbayWorkspaceChanged, [&] {
        wasThere = preferences.data(keyOf(dataKeys[0], idB)) && storedNames() == QStringLiteral("A C");
    });
    manager->deleteWorkspace(manager->workspaces()[1]);
    EXPECT_TRUE(wasThere) << "when the stores left it";
    EXPECT_EQ(log, QStringList(uuidString(idA)));
    for (const QString &key : dataKeys)
        EXPECT_TRUE(preferences.data(keyOf(key, idA)) && !preferences.data(keyOf(key, idB)));
    for (const QString &key : arrayKeys)
        EXPECT_TRUE(preferences.stringArray(keyOf(key, idA)) && !preferences.stringArray(keyOf(key, idB)));
    for (const QString &key : keptKeys)
        EXPECT_TRUE(preferences.stringArray(keyOf(key, idB))) << qUtf8Printable(key);

    manager->deleteWorkspace(workspace(QUuid(seedID), QString()));
    EXPECT_EQ(log.size(), 1) << "it was not active";
    EXPECT_EQ(manager->workspaces(), QList<Workspace>{workspace(idA, QStringLiteral("A"))});
    manager->deleteWorkspace(manager->workspaces().first());
    EXPECT_EQ(storedNames(), QStringLiteral("A")) << "the last one stays";
    EXPECT_TRUE(preferences.data(keyOf(dataKeys[0], idA)));
}
