#pragma once

#include "library/AppItem.h"

#include <QJsonObject>
#include <QList>
#include <QStringList>

#include <limits>

namespace quillbay {

/// Which applications came onto the machine within the last 30 days, and when each was seen first.
///
/// The record of first sights is a dictionary, `absoluteString` to seconds since 1970, with an entry for each
/// application of the library and no other: who goes away loses its date. It begins with all applications at
/// once, so all are new for the first 30 days.
struct NewlyAdded
{
    static constexpr double window = 30 * 24 * 60 * 60; ///< Seconds.

    /// The newest first: by first sight, and where those are within a second of each other, which is one
    /// scan, by the file's creation. What is alike in both stays in the order of the library. Of sights of
    /// which each is near the next, those count as one scan that are within a second of the newest.
    QList<AppItem> apps;
    QStringList urls;      ///< Of `apps`.
    QJsonObject firstSeen; ///< The record as it has to be from now on.

    /// Whether the answer for these is this one: the same list (shared, not only equal), an equal record, and
    /// a time at which still the same are new.
    bool holds(const QList<AppItem> &library, const QJsonObject &record, double now) const;

    QList<AppItem> library; ///< What it was made of.
    double cutoff = 0;      ///< Dates from here on are new: `window` before the time it was made.
    /// The first of `apps` to become old has this date.
    double oldest = -std::numeric_limits<double>::infinity();
};

/// `record` is what is stored; one with a value that is no number counts as empty. An application is new
/// whose first sight or file is: the file's creation, or its modification where it has none.
NewlyAdded newlyAdded(const QList<AppItem> &library, const QJsonObject &record, double now);

} // namespace quillbay
