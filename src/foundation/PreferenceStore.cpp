#include "foundation/PreferenceStore.h"

#include "foundation/PreferenceFile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>

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

QJsonDocument jsonOf(const PreferenceFile::Value &value)
{
    const QString *text = std::get_if<QString>(&value);
    return text ? QJsonDocument::fromJson(text->toUtf8()) : QJsonDocument();
}

QString textOf(const QJsonDocument &json)
{
    return QString::fromUtf8(json.toJson(QJsonDocument::Compact));
}

} // namespace

PreferenceStore::PreferenceStore(const QString &path)
    : PreferenceStore(std::make_shared<PreferenceFile>(path), QStringLiteral("standard"))
{
}

PreferenceStore::PreferenceStore(std::shared_ptr<PreferenceFile> file, const QString &domain)
    : m_file(std::move(file))
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
    return PreferenceStore(m_file, name);
}

std::optional<QByteArray> PreferenceStore::data(const QString &key) const
{
    return as<QByteArray>(m_file->read(m_domain, key, DataType));
}

std::optional<QString> PreferenceStore::string(const QString &key) const
{
    return as<QString>(m_file->read(m_domain, key, StringType));
}

std::optional<QStringList> PreferenceStore::stringArray(const QString &key) const
{
    const QJsonDocument json = jsonOf(m_file->read(m_domain, key, StringArrayType));
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

std::optional<QJsonObject> PreferenceStore::dictionary(const QString &key) const
{
    const QJsonDocument json = jsonOf(m_file->read(m_domain, key, DictionaryType));
    return json.isObject() ? std::optional(json.object()) : std::nullopt;
}

std::optional<bool> PreferenceStore::boolean(const QString &key) const
{
    const auto number = as<qint64>(m_file->read(m_domain, key, BooleanType));
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<double> PreferenceStore::doubleValue(const QString &key) const
{
    return as<double>(m_file->read(m_domain, key, DoubleType));
}

bool PreferenceStore::setData(const QString &key, const QByteArray &value)
{
    return m_file->write(m_domain, key, DataType, value);
}

bool PreferenceStore::setString(const QString &key, const QString &value)
{
    return m_file->write(m_domain, key, StringType, value);
}

bool PreferenceStore::setStringArray(const QString &key, const QStringList &value)
{
    return m_file->write(m_domain, key, StringArrayType,
                         textOf(QJsonDocument(QJsonArray::fromStringList(value))));
}

bool PreferenceStore::setDictionary(const QString &key, const QJsonObject &value)
{
    return m_file->write(m_domain, key, DictionaryType, textOf(QJsonDocument(value)));
}

bool PreferenceStore::setBoolean(const QString &key, bool value)
{
    return m_file->write(m_domain, key, BooleanType, qint64(value ? 1 : 0));
}

bool PreferenceStore::setDouble(const QString &key, double value)
{
    return m_file->write(m_domain, key, DoubleType, value);
}

bool PreferenceStore::remove(const QString &key)
{
    return m_file->remove(m_domain, key);
}

bool PreferenceStore::isInMemory() const
{
    return m_file->isInMemory();
}

} // namespace quillbay
