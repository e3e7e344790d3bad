#include "analytics/AnalyticsManager.h"

#include "foundation/Console.h"
#include "foundation/Uuid.h"

#include <QUrl>
#include <QUrlQuery>

#include <utility>

namespace quillbay {

namespace {

constexpr double flushInterval = 60; // seconds

QString distinctIdKey()
{
    return QStringLiteral("mp_distinct_id");
}

QString hasOpenedBeforeKey()
{
    return QStringLiteral("mp_has_opened_before");
}

MarlpostType marlpostType(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
        return value.toLongLong();
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return value.toULongLong();
    case QMetaType::Float:
    case QMetaType::Double:
        return value.toDouble();
    default:
        return value.toString();
    }
}

/// The first "uid" of the query with a value; one of blanks alone would name nobody.
std::optional<QString> attributionId(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid())
        return std::nullopt;
    for (const auto &[name, value] : QUrlQuery(url).queryItems(QUrl::FullyDecoded)) {
        if (name == QLatin1String("uid") && !value.trimmed().isEmpty())
            return value;
    }
    return std::nullopt;
}

} // namespace

AnalyticsManager::AnalyticsManager(const PreferenceStore &preferences, MarlpostSurroundings surroundings,
                                   MarlpostManager &clients)
    : m_preferences(preferences)
    , m_surroundings(std::move(surroundings))
    , m_clients(clients)
{
}

void AnalyticsManager::initialize()
{
    printLine(QStringLiteral("🔍 Initializing Marlpost..."));
    MarlpostOptions options;
    options.token = marlpostToken;
    options.flushInterval = flushInterval;
    MarlpostInstance &client = *m_clients.initialize(options, m_surroundings);
    client.setLoggingEnabled(true);

    QString distinctId = m_preferences.string(distinctIdKey()).value_or(QString());
    if (!distinctId.isEmpty()) {
        printLine(QStringLiteral("👤 Identified user with saved ID: ") + distinctId);
    } else {
        distinctId = uuidString(QUuid::createUuid());
        printLine(QStringLiteral("👤 Generated new anonymous ID: ") + distinctId);
        m_preferences.setString(distinctIdKey(), distinctId);
    }
    client.identify(distinctId.toStdString());
    checkFirstOpen();
    trackEvent("App Opened");
}

void AnalyticsManager::checkFirstOpen()
{
    if (m_preferences.boolean(hasOpenedBeforeKey()).value_or(false))
        return;
    trackEvent("First App Open");
    m_preferences.setBoolean(hasOpenedBeforeKey(), true);
}

void AnalyticsManager::handleURL(const QString &url)
{
    printLine(QStringLiteral("🔗 Handling incoming URL: ") + url);
    const std::optional<QString> uid = attributionId(url);
    if (!uid)
        return;
    printLine(QStringLiteral("🔗 Attribution UID found: ") + *uid);
    m_preferences.setString(distinctIdKey(), *uid);
    m_clients.mainInstance()->identify(uid->toStdString());
    trackEvent("Attribution Link Captured", MarlpostDictionary{{"source", "url_scheme"}});
}

void AnalyticsManager::trackEvent(const std::string &name, const MarlpostDictionary &properties)
{
    printLine(QStringLiteral("📊 Tracking Event: ") + QString::fromStdString(name) +
              QStringLiteral(" with props: ") +
              QString::fromStdString(MarlpostType(properties).description()));
    const std::string &version = m_surroundings.appVersion.version;
    MarlpostDictionary all = properties;
    all.set("platform", "mac");
    all.set("app_version", version.empty() ? "1.0" : version);
    const std::shared_ptr<MarlpostInstance> client = m_clients.mainInstance();
    client->track(name, std::move(all));
    client->flush();
}

void AnalyticsManager::trackEvent(const QString &name, const QVariantMap &properties)
{
    MarlpostDictionary converted;
    for (auto property = properties.cbegin(); property != properties.cend(); ++property)
        converted.set(property.key().toStdString(), marlpostType(property.value()));
    trackEvent(name.toStdString(), converted);
}

} // namespace quillbay
