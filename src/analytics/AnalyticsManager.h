#pragma once

#include "analytics/MarlpostManager.h"
#include "analytics/MarlpostOptions.h"
#include "foundation/PreferenceStore.h"

#include <QString>
#include <QVariantMap>

namespace quillbay {

/// The program's whole contact with the analytics client: starts it, says who the user is, and hands each
/// event on at once with "platform" and "app_version".
///
/// Kept in the preferences: "mp_distinct_id", the string that events are attributed to, and
/// "mp_has_opened_before", true once the first start was recorded. Nothing here fails or waits.
/// Thread: main thread. One instance, from the start of the program to its end.
class AnalyticsManager
{
public:
    /// The project at the service that the events belong to.
    static constexpr char marlpostToken[] = "7c1e9a40d2b86f35e0a4c71b93de6f08";

    /// `clients` keeps the instance that is started here; it must outlive this object.
    AnalyticsManager(const PreferenceStore &preferences, MarlpostSurroundings surroundings,
                     MarlpostManager &clients = MarlpostManager::sharedInstance());

    /// Once, before anything else here: starts the client and records the start.
    void initialize();

    /// A URL was opened into the program: the first query item "uid" with a value becomes the distinct id,
    /// now and for later starts. Anything else in it is ignored.
    void handleURL(const QString &url);

    void trackEvent(const std::string &name, const MarlpostDictionary &properties = {});
    /// The same for properties as Qt has them: texts, numbers and booleans; others become text.
    void trackEvent(const QString &name, const QVariantMap &properties);

private:
    void checkFirstOpen();

    PreferenceStore m_preferences;
    const MarlpostSurroundings m_surroundings;
    MarlpostManager &m_clients;
};

} // namespace quillbay
