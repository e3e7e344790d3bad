#include "foundation/PreferenceStore.h"

#include "foundation/PreferenceFile.h"

#include <QDir>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <utility>
#include <variant>

namespace quillbay {

namespace {

constexpr QLatin1StringView DataType("data");
constexpr QLatin1StringView StringType("string");
constexpr QLatin1StringView StringArrayType("stringArray");
constexpr QLatin1StringView DictionaryType("dictionary");
constexpr QLatin1StringView BooleanType("boolean");
constexpr QLatin1StringView DoubleType("double");

template <typename T>
std::optional<T> as(const PreferenceFile::Value &value)
{
    const T *held = std::get_if<T>(&value);
    return held ? std::optional(*held) : std::nullopt;
}

std::optional<QStringList> stringArrayOf(const QJsonDocument &json)
{
    const QJsonArray array = json.array();
    if (!json.isArray() ||
        !std::all_of(array.begin(), array.end(), [](const QJsonValue &v) { return v.isString(); }))
        return {};
    QStringList strings;
    strings.reserve(array.size());
    for (const QJsonValue &value : array)
        strings.append(value.toString());
    return strings;
}

std::optional<QJsonObject> dictionaryOf(const QJsonDocument &json)
{
    return json.isObject() ? std::optional(json.object()) : std::nullopt;
}

QByteArray textOf(const QStringList &value)
{
    return QJsonDocument(QJsonArray::fromStringList(value)).toJson(QJsonDocument::Compact);
}

QByteArray textOf(const QJsonObject &value)
{
    return QJsonDocument(value).toJson(QJsonDocument::Compact);
}

/// Whether decoding what is written of a value surely gives the same value.
bool survivesWriting(const QStringList &value)
{
    return std::all_of(value.begin(), value.end(), [](const QString &s) { return s.isValidUtf16(); });
}

bool survivesWriting(const QJsonObject &value)
{
    for (auto entry = value.begin(); entry != value.end(); ++entry) {
        if (!entry.key().isValidUtf16() || !entry->isDouble() || !std::isfinite(entry->toDouble()))
            return false;
    }
    return true;
}

} // namespace

/// The file, and data, arrays and dictionaries as they were when last read or written. These count while
/// nobody else has written to the file; and an array or dictionary also later, while the file has the same
/// text for it.
struct PreferenceStore::Connection
{
    struct Known
    {
        std::optional<PreferenceFile::Stamp> stamp; ///< Of the file when it was seen to hold this.
        QByteArray text;                            ///< What the value was decoded from; none for data.
        std::variant<std::monostate, QByteArray, QStringList, QJsonObject> value;
    };
    using Place = std::pair<QString, QString>; ///< Domain and key.

    explicit Connection(const QString &path)
        : file(path)
    {
    }

    /// What is known of the place as a `T`, if the file still holds it.
    template <typename T>
    std::optional<T> current(const Place &place)
    {
        const auto entry = known.constFind(place);
        const T *value = entry == known.cend() ? nullptr : std::get_if<T>(&entry->value);
        if (!value || !entry->stamp)
            return {};
        const T kept = *value; // asking the file may change what is known
        const auto stamp = entry->stamp;
        return file.stamp() == stamp ? std::optional(kept) : std::nullopt;
    }

    std::optional<QByteArray> readData(const Place &place)
    {
        if (auto value = current<QByteArray>(place))
            return value;
        // Asked first: what is written in between makes the stamp old, not the value.
        const auto stamp = file.stamp();
        std::optional<QByteArray> value = as<QByteArray>(file.read(place.first, place.second, DataType));
        remember(place, value ? Known{stamp, {}, *value} : Known{});
        return value;
    }

    template <typename T>
    std::optional<T> read(const Place &place, QLatin1StringView type,
                          std::optional<T> (*decode)(const QJsonDocument &))
    {
        if (auto value = current<T>(place))
            return value;
        const auto stamp = file.stamp();
        const Known last = known.value(place);
        const std::optional<QByteArray> text = file.readText(place.first, place.second, type, last.text);
        const T *kept = std::get_if<T>(&last.value);
        std::optional<T> value;
        if (text && kept && isSame(*text, last.text))
            value = *kept;
        else if (text) // By way of UTF-16, which puts U+FFFD in the place of what is no UTF-8.
            value = decode(QJsonDocument::fromJson(QString::fromUtf8(*text).toUtf8()));
        remember(place, value ? Known{stamp, *text, *value} : Known{});
        return value;
    }

    bool writeData(const Place &place, const QByteArray &value)
    {
        if (current<QByteArray>(place) == value)
            return !file.isInMemory();
        return write(place, DataType, value, Known{{}, {}, value});
    }

    template <typename T>
    bool writeText(const Place &place, QLatin1StringView type, const T &value)
    {
        if (current<T>(place) == value)
            return !file.isInMemory();
        const QByteArray text = textOf(value);
        return write(place, type, QString::fromUtf8(text),
                     survivesWriting(value) ? Known{{}, text, value} : Known{});
    }

    /// Writes, and knows the value from then on; `entry` is empty where it would be read otherwise.
    bool write(const Place &place, QLatin1StringView type, const PreferenceFile::Value &value,
               Known entry = {})
    {
        // Asked first: a stamp of later could hide what another process wrote over this.
        const auto before = file.stamp();
        const bool isWritten = file.write(place.first, place.second, type, value);
        if (isWritten || file.isInMemory())
            entry.stamp = before;
        else
            entry = {};
        remember(place, std::move(entry));
        return isWritten;
    }

    bool remove(const Place &place)
    {
        known.remove(place);
        return file.remove(place.first, place.second);
    }

    void remember(const Place &place, Known entry)
    {
        if (entry.value.index() == 0)
            known.remove(place);
        else
            known.insert(place, std::move(entry));
    }

    static bool isSame(const QByteArray &a, const QByteArray &b)
    {
        return a.constData() == b.constData() && a.size() == b.size();
    }

    PreferenceFile file;
    QHash<Place, Known> known;
};

PreferenceStore::PreferenceStore(const QString &path)
    : PreferenceStore(std::make_shared<Connection>(path), QStringLiteral("standard"))
{
}

PreferenceStore::PreferenceStore(std::shared_ptr<Connection> connection, const QString &domain)
    : m_connection(std::move(connection))
    , m_domain(domain)
{
}

QString PreferenceStore::defaultPath()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    // A relative folder in the environment does not count, which Qt does not look at.
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::home().filePath(QStringLiteral(".config"));
    return folder + QStringLiteral("/quillbay/preferences.sqlite");
}

PreferenceStore PreferenceStore::suite(const QString &name) const
{
    return PreferenceStore(m_connection, name);
}

std::optional<QByteArray> PreferenceStore::data(const QString &key) const
{
    return m_connection->readData({m_domain, key});
}

std::optional<QString> PreferenceStore::string(const QString &key) const
{
    return as<QString>(m_connection->file.read(m_domain, key, StringType));
}

std::optional<QStringList> PreferenceStore::stringArray(const QString &key) const
{
    return m_connection->read<QStringList>({m_domain, key}, StringArrayType, stringArrayOf);
}

std::optional<QJsonObject> PreferenceStore::dictionary(const QString &key) const
{
    return m_connection->read<QJsonObject>({m_domain, key}, DictionaryType, dictionaryOf);
}

std::optional<bool> PreferenceStore::boolean(const QString &key) const
{
    const auto number = as<qint64>(m_connection->file.read(m_domain, key, BooleanType));
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<double> PreferenceStore::doubleValue(const QString &key) const
{
    return as<double>(m_connection->file.read(m_domain, key, DoubleType));
}

bool PreferenceStore::setData(const QString &key, const QByteArray &value)
{
    return m_connection->writeData({m_domain, key}, value);
}

bool PreferenceStore::setString(const QString &key, const QString &value)
{
    return m_connection->write({m_domain, key}, StringType, value);
}

bool PreferenceStore::setStringArray(const QString &key, const QStringList &value)
{
    return m_connection->writeText({m_domain, key}, StringArrayType, value);
}

bool PreferenceStore::setDictionary(const QString &key, const QJsonObject &value)
{
    return m_connection->writeText({m_domain, key}, DictionaryType, value);
}

bool PreferenceStore::setBoolean(const QString &key, bool value)
{
    return m_connection->write({m_domain, key}, BooleanType, qint64(value ? 1 : 0));
}

bool PreferenceStore::setDouble(const QString &key, double value)
{
    return m_connection->write({m_domain, key}, DoubleType, value);
}

bool PreferenceStore::remove(const QString &key)
{
    return m_connection->remove({m_domain, key});
}

QString PreferenceStore::path() const
{
    return m_connection->file.path();
}

bool PreferenceStore::isInMemory() const
{
    return m_connection->file.isInMemory();
}

} // namespace quillbay
