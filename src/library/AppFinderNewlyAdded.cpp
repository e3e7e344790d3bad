#include "library/AppFinder.h"

namespace quillbay {

namespace {

const QString firstSeenKey = QStringLiteral("AppFirstSeenDates");
const QString newlyAddedKey = QStringLiteral("NewlyAddedAppURLs");

} // namespace

void AppFinder::updateNewlyAddedApps()
{
    const double now = m_surroundings.now();
    const QJsonObject record = m_surroundings.preferences.dictionary(firstSeenKey).value_or(QJsonObject());
    if (!m_newlyAdded.holds(apps(), record, now)) {
        m_newlyAdded = newlyAdded(apps(), record, now);
        if (m_newlyAdded.firstSeen != record)
            m_surroundings.preferences.setDictionary(firstSeenKey, m_newlyAdded.firstSeen);
    }
    publish(m_newlyAddedApps, m_newlyAdded.apps, &AppFinder::newlyAddedAppsChanged);
    saveNewlyAdded();
}

void AppFinder::saveNewlyAdded()
{
    m_surroundings.preferences.setStringArray(newlyAddedKey, m_newlyAdded.urls);
}

void AppFinder::loadNewlyAdded()
{
    const QStringList urls = m_surroundings.preferences.stringArray(newlyAddedKey).value_or(QStringList());
    publish(m_newlyAddedApps, urls == m_newlyAdded.urls ? m_newlyAdded.apps : appsOfURLs(urls),
            &AppFinder::newlyAddedAppsChanged);
}

} // namespace quillbay
