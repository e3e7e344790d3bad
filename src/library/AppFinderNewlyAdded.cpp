#include "library/AppFinder.h"
#include "platform/ApplicationSource.h"

namespace quillbay {

namespace {

const QString firstSeenKey = QStringLiteral("AppFirstSeenDates");
const QString newlyAddedKey = QStringLiteral("NewlyAddedAppURLs");

} // namespace

void AppFinder::readNewlyAdded(ScannedLibrary &library) const
{
    for (AppItem &app : library.apps) {
        const platform::FileDates dates = m_surroundings.applications.dates(app.path);
        app.fileCreated = dates.created;
        app.fileModified = dates.modified;
    }
    if (m_preferencesPath.isEmpty())
        return;
    library.recordVersion = m_recordVersion;
    const PreferenceStore store(m_preferencesPath);
    const QJsonObject record = store.dictionary(firstSeenKey).value_or(QJsonObject());
    library.newlyAdded = newlyAdded(library.apps, record, m_surroundings.now());
    library.isRecordStored = library.newlyAdded.firstSeen == record;
    library.areURLsStored = store.stringArray(newlyAddedKey) == library.newlyAdded.urls;
}

void AppFinder::adoptNewlyAdded()
{
    // The worker does not see preferences that live in memory, nor what was stored after it had looked.
    if (m_surroundings.preferences.isInMemory() || m_library.recordVersion != m_recordVersion) {
        updateNewlyAddedApps();
        loadNewlyAdded();
        return;
    }
    m_newlyAdded = m_library.newlyAdded;
    if (!m_library.isRecordStored)
        saveFirstSeen();
    if (!m_library.areURLsStored)
        saveNewlyAdded();
    publish(m_newlyAddedApps, m_newlyAdded.apps, &AppFinder::newlyAddedAppsChanged);
}

void AppFinder::saveFirstSeen()
{
    ++m_recordVersion;
    m_surroundings.preferences.setDictionary(firstSeenKey, m_newlyAdded.firstSeen);
}

void AppFinder::updateNewlyAddedApps()
{
    const double now = m_surroundings.now();
    const QJsonObject record = m_surroundings.preferences.dictionary(firstSeenKey).value_or(QJsonObject());
    if (!m_newlyAdded.holds(apps(), record, now)) {
        m_newlyAdded = newlyAdded(apps(), record, now);
        if (m_newlyAdded.firstSeen != record)
            saveFirstSeen();
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
