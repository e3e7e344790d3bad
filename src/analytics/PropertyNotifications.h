#pragma once

#include "analytics/MarlpostType.h"

#include <functional>
#include <memory>
#include <string_view>

namespace quillbay {

/// The two announcements by which anyone can change the super properties of every client instance without
/// holding one. Thread: any; observers run on the thread of the post.
class PropertyNotifications
{
public:
    /// The properties are set.
    static constexpr std::string_view Register = "com.marlpost.properties.register";
    /// The properties of these names are removed; the values do not count.
    static constexpr std::string_view Unregister = "com.marlpost.properties.unregister";

    using Observer = std::function<void(std::string_view name, const MarlpostDictionary &properties)>;

    static void post(std::string_view name, const MarlpostDictionary &properties);
    /// The observer is called while `owner` lives, and kept alive meanwhile.
    static void addObserver(std::weak_ptr<void> owner, Observer observer);
};

} // namespace quillbay
