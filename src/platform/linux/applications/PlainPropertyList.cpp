#include "platform/linux/applications/PlainPropertyList.h"

#include <array>

namespace quillbay::platform {

namespace {

/// Walks the tags of a list of the simple kind and remembers which elements are open.
class TagWalker
{
public:
    enum class Step { Opened, Empty, Closed, End, NotPlain };

    explicit TagWalker(std::string_view text)
        : m_text(text)
    {
    }

    Step next()
    {
        for (;;) {
            const size_t begin = m_text.find('<', m_at);
            if (begin == std::string_view::npos)
                return m_depth == 0 && m_seen ? Step::End : Step::NotPlain;
            const size_t end = m_text.find('>', begin);
            if (end == std::string_view::npos || end == begin + 1)
                return Step::NotPlain;
            m_between = m_text.substr(m_at, begin - m_at);
            m_at = end + 1;
            const std::string_view tag = m_text.substr(begin + 1, end - begin - 1);
            if (tag.front() == '/')
                return close(tag.substr(1));
            if (tag.front() != '?' && tag.front() != '!')
                return open(tag);
            if (!isPlainDeclaration(tag))
                return Step::NotPlain;
        }
    }

    std::string_view name() const { return m_name; }
    /// The text between the tag before and this one.
    std::string_view between() const { return m_between; }
    /// Whether the elements around this one are the list and its outermost dictionary, and no others.
    bool isInRoot() const { return m_depth == 2 && m_open[0] == "plist" && m_open[1] == "dict"; }

private:
    static bool isPlainDeclaration(std::string_view tag)
    {
        if (tag.front() == '?')
            return tag.size() > 1 && tag.back() == '?';
        return tag.substr(0, 8) == "!DOCTYPE" && tag.find('[') == std::string_view::npos;
    }

    Step open(std::string_view tag)
    {
        const bool empty = tag.back() == '/';
        if (empty)
            tag.remove_suffix(1);
        m_name = tag.substr(0, tag.find(' '));
        // Attributes are for the outermost element; a second one of these is no list.
        if ((m_name.size() != tag.size() && m_name != "plist") || (m_depth == 0 && m_seen))
            return Step::NotPlain;
        m_seen = true;
        if (empty)
            return Step::Empty;
        if (m_depth == m_open.size())
            return Step::NotPlain;
        m_open[m_depth++] = m_name;
        return Step::Opened;
    }

    Step close(std::string_view tag)
    {
        if (m_depth == 0 || m_open[m_depth - 1] != tag)
            return Step::NotPlain;
        --m_depth;
        m_name = tag;
        return Step::Closed;
    }

    std::string_view m_text;
    size_t m_at = 0;
    std::string_view m_name;
    std::string_view m_between;
    std::array<std::string_view, 32> m_open;
    size_t m_depth = 0;
    bool m_seen = false;
};

} // namespace

std::optional<QString> plainPropertyListString(std::string_view text, std::string_view key)
{
    TagWalker walker(text);
    QString result;
    bool wanted = false;
    for (;;) {
        switch (walker.next()) {
        case TagWalker::Step::NotPlain:
            return std::nullopt;
        case TagWalker::Step::End:
            return result;
        case TagWalker::Step::Opened:
            break;
        case TagWalker::Step::Empty:
            if (wanted && walker.isInRoot()) {
                result = walker.name() == "string" ? QStringLiteral("") : QString();
                wanted = false;
            }
            break;
        case TagWalker::Step::Closed:
            if (!walker.isInRoot())
                break;
            if (walker.name() == "key") {
                wanted = walker.between() == key;
            } else if (wanted) {
                const std::string_view value = walker.between();
                if (value.find('&') != std::string_view::npos)
                    return std::nullopt;
                result = walker.name() == "string"
                             ? QString::fromUtf8(value.empty() ? "" : value.data(), qsizetype(value.size()))
                             : QString();
                wanted = false;
            }
            break;
        }
    }
}

} // namespace quillbay::platform
