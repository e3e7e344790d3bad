#include "analytics/ArchiveReader.h"
#include "analytics/MarlpostLogger.h"
#include "analytics/MarlpostPersistence.h"
#include "foundation/PreferenceStore.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::string_view PropertiesKind = "properties";
constexpr std::string_view OptOutKind = "optOutStatus";
constexpr std::array<std::string_view, 5> Kinds = {
    rawValue(PersistenceType::Events), rawValue(PersistenceType::People), rawValue(PersistenceType::Groups),
    PropertiesKind, OptOutKind};

std::optional<std::string> textUnder(const MarlpostDictionary &archive, std::string_view key)
{
    const std::string *text = archive.findString(key);
    return text ? std::optional(*text) : std::nullopt;
}

template <typename T>
const T *under(const MarlpostDictionary &archive, std::string_view key)
{
    const MarlpostType *value = archive.find(key);
    return value ? value->get<T>() : nullptr;
}

} // namespace

QString MarlpostPersistence::archivePath(std::string_view kind) const
{
    return m_places.folder + QStringLiteral("/marlpost-") + QString::fromStdString(m_name) +
           QLatin1Char('-') + QLatin1String(kind.data(), qsizetype(kind.size()));
}

bool MarlpostPersistence::needMigration() const
{
    return std::any_of(Kinds.begin(), Kinds.end(),
                       [this](std::string_view kind) { return QFileInfo(archivePath(kind)).isFile(); });
}

void MarlpostPersistence::migrate()
{
    for (const std::string_view kind : Kinds) {
        QFile file(archivePath(kind));
        if (!QFileInfo(file).isFile())
            continue;
        const std::string path = file.fileName().toStdString();
        if (!file.open(QFile::ReadOnly)) {
            MarlpostLogger::error("Unable to read archive file at path: ", path);
            continue;
        }
        const QByteArray bytes = file.read(qint64(LongestPropertyList) + 1);
        file.close();
        const auto archive = readPropertyList({bytes.constData(), std::size_t(bytes.size())});
        const auto taken = archive ? takeOver(kind, *archive) : Takeover::Unreadable;
        if (taken == Takeover::Failed)
            MarlpostLogger::error("Unable to store what the archive file holds, path: ", path);
        else if (taken == Takeover::Done && !file.remove())
            MarlpostLogger::error("Unable to remove archive file at path: ", path);
        else if (taken == Takeover::Unreadable &&
                 !file.rename(file.fileName() + QStringLiteral(".unreadable")))
            MarlpostLogger::error("Unable to set aside archive file at path: ", path);
    }
}

MarlpostPersistence::Takeover MarlpostPersistence::takeOver(std::string_view kind,
                                                            const MarlpostType &archive)
{
    if (kind == PropertiesKind) {
        const auto *properties = archive.get<MarlpostDictionary>();
        return properties ? takeOverProperties(*properties) : Takeover::Unreadable;
    }
    if (kind == OptOutKind) {
        const bool *status = archive.get<bool>();
        if (!status)
            return Takeover::Unreadable;
        return suite().setBoolean(key("OptOutStatus"), *status) ? Takeover::Done : Takeover::Failed;
    }
    const auto type = std::find_if(AllPersistenceTypes.begin(), AllPersistenceTypes.end(),
                                   [kind](PersistenceType t) { return rawValue(t) == kind; });
    const auto *entities = archive.get<MarlpostArray>();
    return entities ? takeOverQueue(*type, *entities, false) : Takeover::Unreadable;
}

MarlpostPersistence::Takeover MarlpostPersistence::takeOverQueue(PersistenceType type,
                                                                 const MarlpostArray &archive, bool flag)
{
    std::vector<MarlpostDictionary> entities;
    for (const MarlpostType &value : archive) {
        if (const auto *entity = value.get<MarlpostDictionary>())
            entities.push_back(*entity);
    }
    return saveEntities(entities, type, flag) ? Takeover::Done : Takeover::Failed;
}

MarlpostPersistence::Takeover MarlpostPersistence::takeOverProperties(const MarlpostDictionary &archive)
{
    const auto *heldBack = under<MarlpostArray>(archive, "peopleUnidentifiedQueue");
    if (heldBack && takeOverQueue(PersistenceType::People, *heldBack, true) == Takeover::Failed)
        return Takeover::Failed;
    if (const auto *properties = under<MarlpostDictionary>(archive, "superProperties"))
        saveSuperProperties(*properties);
    if (const auto *timedEvents = under<MarlpostDictionary>(archive, "timedEvents"))
        saveTimedEvents(*timedEvents);
    MarlpostIdentity identity = {textUnder(archive, "distinctId").value_or(std::string()),
                                 textUnder(archive, "peopleDistinctId"),
                                 textUnder(archive, "anonymousId"),
                                 textUnder(archive, "userId"),
                                 textUnder(archive, "alias"),
                                 std::nullopt};
    if (const bool *had = under<bool>(archive, "hadPersistedDistinctId"))
        identity.hadPersistedDistinctId = *had;
    saveIdentity(identity);
    return loadIdentity() == identity && !suite().isInMemory() ? Takeover::Done : Takeover::Failed;
}

} // namespace quillbay
