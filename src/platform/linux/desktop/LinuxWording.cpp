#include "platform/DesktopWording.h"

#include <array>

namespace quillbay::platform {

namespace {

struct Word
{
    QLatin1StringView macOS;
    QLatin1StringView here;
};

/// A name that holds another one stands before it.
constexpr std::array words{
    Word{QLatin1StringView("Touch ID / Apple Watch"), QLatin1StringView("Fingerprint")},
    Word{QLatin1StringView("Touch ID"), QLatin1StringView("Fingerprint")},
    Word{QLatin1StringView("Full Disk Access"), QLatin1StringView("File Access")},
    Word{QLatin1StringView("System Settings"), QLatin1StringView("Settings")},
    Word{QLatin1StringView("protected Library folders"), QLatin1StringView("protected folders")},
    Word{QLatin1StringView("macOS SIP"), QLatin1StringView("the system")},
    Word{QLatin1StringView("macOS"), QLatin1StringView("the system")},
};

} // namespace

QString desktopWording(QString text)
{
    for (const Word &word : words)
        text.replace(word.macOS, word.here);
    return text;
}

} // namespace quillbay::platform
