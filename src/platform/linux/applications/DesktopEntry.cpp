#include "platform/linux/applications/DesktopEntry.h"

#include "platform/linux/applications/LineStarts.h"

#include <QByteArrayView>

#include <array>
#include <cstdint>
#include <cstring>

namespace quillbay::platform {

namespace {

constexpr std::string_view MainGroup = "[Desktop Entry]";

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v';
}

std::string_view trimmedLeft(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

std::string_view trimmedRight(std::string_view text)
{
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The line that begins at `begin`, without its line feed.
std::string_view lineAt(const char *begin, const char *end)
{
    const void *feed = std::memchr(begin, '\n', size_t(end - begin));
    return std::string_view(begin, size_t((feed ? static_cast<const char *>(feed) : end) - begin));
}

template <size_t Size>
bool startsWith(std::string_view text, const char (&start)[Size])
{
    // The constant size lets the compiler compare words instead of calling a function.
    return text.size() >= Size - 1 && std::memcmp(text.data(), start, Size - 1) == 0;
}

/// What the line sets if `rest`, its end behind the key, goes on with an equals sign.
bool assigns(std::string_view rest, std::string_view &value)
{
    rest = trimmedLeft(rest);
    if (rest.empty() || rest.front() != '=')
        return false;
    value = trimmedLeft(rest.substr(1));
    if (!value.empty() && value.back() == '\r')
        value.remove_suffix(1);
    return true;
}

/// Whether `line` sets `key` itself, not a localised form of it; then `value` is what it sets.
template <size_t Size>
bool valueOf(std::string_view line, const char (&key)[Size], std::string_view &value)
{
    return startsWith(line, key) && assigns(line.substr(Size - 1), value);
}

/// "1" is how entries older than version 1.0 of the format say "true".
bool isTrue(std::string_view value)
{
    value = trimmedRight(value);
    return value == "true" || value == "1";
}

/// Tells by a line's first bytes whether it can matter, for nine lines in ten of a translated entry cannot.
class QuickLook
{
public:
    explicit QuickLook(const std::vector<std::string> &locales)
    {
        for (const std::string &locale : locales)
            m_localeInitials |= bitOf(locale.front());
    }

    /// Whether the line at `line`, of a text that ends at `end`, may be a group, a key that `EntryReader`
    /// knows, or a name in a locale that begins as one of ours does. True where in doubt.
    bool isWorthReading(const char *line, const char *end) const
    {
        if (!Initials[uint8_t(*line)])
            return false;
        if (*line == 'C')
            return end - line < 2 || line[1] == 'a';
        return *line != 'N' || end - line < 6 || line[4] != '[' || (m_localeInitials & bitOf(line[5]));
    }

private:
    static uint64_t bitOf(char initial) { return uint64_t(1) << (uint8_t(initial) % 64); }

    static constexpr std::array<bool, 256> Initials = [] {
        std::array<bool, 256> result = {};
        for (const char initial : std::string_view("[CDEHINOPSTX \t\r\f\v"))
            result[uint8_t(initial)] = true;
        return result;
    }();

    uint64_t m_localeInitials = 0;
};

class EntryReader
{
public:
    EntryReader(const char *end, const std::vector<std::string> &locales)
        : m_end(end)
        , m_locales(locales)
        , m_rank(locales.size() + 1)
    {
    }

    /// Reads the line that begins at `begin`. False where the main group ends or there is none.
    /// Kept out of the loop over all lines, of which few come here.
    [[gnu::noinline]] bool read(const char *begin)
    {
        const std::string_view line = trimmedLeft(lineAt(begin, m_end));
        if (!line.empty() && line.front() == '[') {
            const bool isMainGroup = !m_isInGroup && trimmedRight(line) == MainGroup;
            m_isInGroup = m_isInGroup || isMainGroup;
            return isMainGroup;
        }
        if (m_isInGroup && !line.empty())
            readKey(line);
        return true;
    }

    /// Nothing where the main group was not found.
    std::optional<DesktopEntry> entry() const { return m_isInGroup ? std::optional(m_entry) : std::nullopt; }

private:
    void readKey(std::string_view line)
    {
        std::string_view value;
        switch (line.front()) {
        case 'N':
            if (startsWith(line, "Name"))
                readName(line);
            else if (valueOf(line, "NoDisplay", value))
                m_entry.noDisplay = isTrue(value);
            else if (valueOf(line, "NotShowIn", value))
                m_entry.notShowIn = value;
            break;
        case 'T':
            if (valueOf(line, "Type", value))
                m_entry.type = trimmedRight(value);
            else if (valueOf(line, "TryExec", value))
                m_entry.tryExec = value;
            else if (valueOf(line, "Terminal", value))
                m_entry.terminal = isTrue(value);
            break;
        case 'S':
            if (valueOf(line, "StartupNotify", value))
                m_entry.startupNotify = isTrue(value);
            break;
        case 'H':
            if (valueOf(line, "Hidden", value))
                m_entry.hidden = isTrue(value);
            break;
        case 'D':
            if (valueOf(line, "DBusActivatable", value))
                m_entry.dbusActivatable = isTrue(value);
            break;
        case 'O':
            if (valueOf(line, "OnlyShowIn", value))
                m_entry.onlyShowIn = value;
            break;
        case 'E':
            valueOf(line, "Exec", m_entry.exec);
            break;
        case 'I':
            valueOf(line, "Icon", m_entry.icon);
            break;
        case 'P':
            valueOf(line, "Path", m_entry.workingDirectory);
            break;
        case 'C':
            valueOf(line, "Categories", m_entry.categories);
            break;
        case 'X':
            if (!valueOf(line, "X-Flatpak", m_entry.flatpakId))
                valueOf(line, "X-SnapInstanceName", m_entry.snapName);
            break;
        default:
            break;
        }
    }

    void readName(std::string_view line)
    {
        size_t rank = m_locales.size();
        std::string_view rest = line.substr(4);
        if (!rest.empty() && rest.front() == '[') {
            rest.remove_prefix(1);
            rank = rankOf(rest);
            if (rank == m_locales.size())
                return;
            rest.remove_prefix(m_locales[rank].size() + 1);
        }
        // An equal rank is the same key once more; a worse one is of no interest.
        std::string_view value;
        if (rank > m_rank || !assigns(rest, value) || value.empty() ||
            std::memchr(value.data(), 0, value.size()))
            return;
        if (!QByteArrayView(value.data(), qsizetype(value.size())).isValidUtf8())
            return;
        m_entry.name = value;
        m_rank = rank;
    }

    /// The index of the locale that `rest` begins with, up to a closing bracket; one past the last if it is
    /// none.
    size_t rankOf(std::string_view rest) const
    {
        for (size_t i = 0; i < m_locales.size(); ++i) {
            const std::string &locale = m_locales[i];
            if (rest.size() > locale.size() && rest.front() == locale.front() && rest[locale.size()] == ']' &&
                rest.substr(0, locale.size()) == locale)
                return i;
        }
        return m_locales.size();
    }

    const char *m_end; ///< Of the text.
    bool m_isInGroup = false;
    const std::vector<std::string> &m_locales;
    size_t m_rank; ///< Of the name found so far: index of its locale, then the plain name, then none.
    DesktopEntry m_entry;
};

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, const std::vector<std::string> &locales)
{
    if (text.substr(0, 3) == "\xEF\xBB\xBF")
        text.remove_prefix(3);
    const char *end = text.data() + text.size();
    const QuickLook look(locales);
    EntryReader reader(end, locales);
    forEachLineStart(
        text, [&](const char *begin) { return !look.isWorthReading(begin, end) || reader.read(begin); });
    return reader.entry();
}

QString entryString(std::string_view value)
{
    if (value.find('\\') == std::string_view::npos)
        return QString::fromUtf8(value.empty() ? "" : value.data(), qsizetype(value.size()));
    std::string plain;
    plain.reserve(value.size());
    for (size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            plain += value[i];
            continue;
        }
        switch (const char escaped = value[++i]) {
        case 's':
            plain += ' ';
            break;
        case 'n':
            plain += '\n';
            break;
        case 't':
            plain += '\t';
            break;
        case 'r':
            plain += '\r';
            break;
        case '\\':
            plain += '\\';
            break;
        default:
            plain += '\\';
            plain += escaped;
        }
    }
    return QString::fromUtf8(plain.data(), qsizetype(plain.size()));
}

} // namespace quillbay::platform
