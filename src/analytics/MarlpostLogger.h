#pragma once

#include <concepts>
#include <functional>
#include <string>
#include <string_view>

namespace quillbay {

/// Where the analytics client logs, for the whole process. Silent until it is switched on. A message is made
/// of parts (texts and integers) that are put together only when somebody listens.
/// Thread: any; one lock of its own, held while the sink runs, so that lines come whole and in order.
class MarlpostLogger
{
public:
    enum class Level { Debug, Info, Warning, Error };
    /// Must not log itself.
    using Sink = std::function<void(Level level, std::string_view message)>;

    static void setEnabled(bool enabled);
    static bool isEnabled();
    /// Another place for the messages; an empty one brings standard output back, where a line reads
    /// "[Marlpost - warning] " and the message.
    static void setSink(Sink sink);

    template <typename... Parts>
    static void debug(const Parts &...parts)
    {
        log(Level::Debug, parts...);
    }
    template <typename... Parts>
    static void info(const Parts &...parts)
    {
        log(Level::Info, parts...);
    }
    template <typename... Parts>
    static void warning(const Parts &...parts)
    {
        log(Level::Warning, parts...);
    }
    template <typename... Parts>
    static void error(const Parts &...parts)
    {
        log(Level::Error, parts...);
    }

private:
    template <typename... Parts>
    static void log(Level level, const Parts &...parts)
    {
        if (!isEnabled())
            return;
        std::string message;
        (append(message, parts), ...);
        write(level, message);
    }
    static void append(std::string &message, std::string_view part) { message += part; }
    template <std::integral Integer>
    static void append(std::string &message, Integer part)
    {
        message += std::to_string(part);
    }
    static void write(Level level, std::string_view message);
};

} // namespace quillbay
