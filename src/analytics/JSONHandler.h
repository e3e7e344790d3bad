#pragma once

#include "analytics/MarlpostType.h"
#include "analytics/StoredEntity.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// JSON of the analytics client. Dates become text in UTC, URLs their text, floats and doubles the shortest
/// text that reads back as the same number; what is not UTF-8 in a string becomes U+FFFD. Entries keep their
/// order. Thread: any.
namespace quillbay::JSONHandler {

/// Arrays and dictionaries nested deeper than this are neither written nor read.
constexpr int MaximumDepth = 512;

/// Compact JSON text. Nothing, with a line in the log, where a number is not finite or the nesting too deep.
std::optional<std::string> serializeJSONObject(const MarlpostDictionary &object);
std::optional<std::string> serializeJSONObject(const MarlpostType &value);

/// The JSON array of the entities, each with its "id": a batch as it is sent. Nothing where there are none.
std::optional<std::string> encodeAPIData(std::span<const StoredEntity> batch);

/// The text of a JSON object as a dictionary; nothing, with a line in the log, for any other text. Whole
/// numbers come as integers, others as doubles; of equal keys the last one counts.
std::optional<MarlpostDictionary> deserializeData(std::string_view text);

/// What the store must know of a row before it is sent, read in one pass without building the object.
struct ObjectFacts
{
    std::string event;          ///< The string under "event" of the outermost object, if there is one.
    bool hasDistinctId = false; ///< Whether it has a "$distinct_id" other than null.
    bool hasId = false;         ///< Whether it has an "id".
};
/// Nothing, with a line in the log, where the text is not exactly one JSON object.
std::optional<ObjectFacts> readFacts(std::string_view text);

} // namespace quillbay::JSONHandler
