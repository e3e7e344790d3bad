#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

/// The kinds of entity, each with a queue, a table and a path of the service of its own.
enum class PersistenceType { Events, People, Groups };

/// In the order in which they are flushed.
constexpr std::array<PersistenceType, 3> AllPersistenceTypes = {
    PersistenceType::Events, PersistenceType::People, PersistenceType::Groups};

/// "events", "people" or "groups": part of table and file names.
constexpr std::string_view rawValue(PersistenceType type)
{
    switch (type) {
    case PersistenceType::Events:
        return "events";
    case PersistenceType::People:
        return "people";
    case PersistenceType::Groups:
        return "groups";
    }
    return {};
}

/// One row of a queue. The entity stays the text of one JSON object that it is stored and sent as (valid,
/// and without an "id" of its own): taken apart, a whole queue would be many times its size. `id` becomes the
/// object's last entry when it is sent.
struct StoredEntity
{
    std::int32_t id = 0;
    std::string json;

    bool operator==(const StoredEntity &) const = default;
};

using StoredEntities = std::vector<StoredEntity>;

} // namespace quillbay
