#include "library/NewlyAdded.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillbay {

namespace {

constexpr double distantPast = -std::numeric_limits<double>::infinity();
constexpr double oneScan = 1; ///< Seconds.

double orDistantPast(double date)
{
    return std::isnan(date) ? distantPast : date;
}

double fileDate(const AppItem &app)
{
    return orDistantPast(std::isnan(app.fileCreated) ? app.fileModified : app.fileCreated);
}

bool hasOnlyDates(const QJsonObject &record)
{
    return std::all_of(record.begin(), record.end(), [](const QJsonValue &date) { return date.isDouble(); });
}

struct Candidate
{
    const AppItem *app;
    double firstSeen;
};

void sortNewestFirst(std::vector<Candidate> &candidates)
{
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate &a, const Candidate &b) { return a.firstSeen > b.firstSeen; });
    for (auto scan = candidates.begin(); scan != candidates.end();) {
        const auto end = std::find_if(scan, candidates.end(), [newest = scan->firstSeen](const Candidate &c) {
            return newest - c.firstSeen > oneScan;
        });
        std::stable_sort(scan, end, [](const Candidate &a, const Candidate &b) {
            return orDistantPast(a.app->fileCreated) > orDistantPast(b.app->fileCreated);
        });
        scan = end;
    }
}

} // namespace

bool NewlyAdded::holds(const QList<AppItem> &otherLibrary, const QJsonObject &record, double now) const
{
    const double otherCutoff = now - window;
    return library.isSharedWith(otherLibrary) && cutoff <= otherCutoff && otherCutoff <= oldest &&
           firstSeen == record;
}

NewlyAdded newlyAdded(const QList<AppItem> &library, const QJsonObject &record, double now)
{
    NewlyAdded result;
    result.library = library;
    result.cutoff = now - NewlyAdded::window;
    result.oldest = std::numeric_limits<double>::infinity();
    const QJsonObject seen = hasOnlyDates(record) ? record : QJsonObject();
    qsizetype known = 0;
    std::vector<double> dates;
    std::vector<Candidate> candidates;
    dates.reserve(size_t(library.size()));
    candidates.reserve(size_t(library.size()));
    for (const AppItem &app : library) {
        const auto entry = seen.constFind(app.absoluteString());
        known += entry != seen.constEnd();
        const double firstSeen = dates.emplace_back(entry != seen.constEnd() ? entry->toDouble() : now);
        const double newest = std::max(firstSeen, fileDate(app));
        if (newest < result.cutoff)
            continue;
        candidates.push_back({&app, firstSeen});
        result.oldest = std::min(result.oldest, newest);
    }
    if (known == library.size() && known == seen.size()) {
        result.firstSeen = seen;
    } else {
        for (qsizetype i = 0; i < library.size(); ++i)
            result.firstSeen.insert(library[i].absoluteString(), dates[size_t(i)]);
    }
    sortNewestFirst(candidates);
    result.apps.reserve(qsizetype(candidates.size()));
    result.urls.reserve(qsizetype(candidates.size()));
    for (const Candidate &candidate : candidates) {
        result.apps.append(*candidate.app);
        result.urls.append(candidate.app->absoluteString());
    }
    return result;
}

} // namespace quillbay
