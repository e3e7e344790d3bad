#include "library/JsonText.h"

#include "foundation/JsonFields.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

bool isPlain(char16_t c)
{
    return c >= 0x20 && c < 0x80 && c != u'"' && c != u'\\';
}

/// Whether four characters are plain, asked of all at once: adding to a lane sets its highest bit where what
/// is there reaches a bound, and does not carry since no plain character has a high bit.
bool areFourPlain(const char16_t *text)
{
    constexpr quint64 each = 0x0001000100010001;
    const quint64 lanes = qFromUnaligned<quint64>(text);
    const quint64 plain = (lanes + 0x7FE0 * each) & ((lanes ^ (u'"' * each)) + 0x7FFF * each) &
                          ((lanes ^ (u'\\' * each)) + 0x7FFF * each);
    return (lanes & (0xFF80 * each)) == 0 && (plain & (0x8000 * each)) == 0x8000 * each;
}

/// Writes at most six bytes, and returns the end of them.
char *writeEscaped(char *out, char byte)
{
    constexpr char digits[] = "0123456789abcdef";
    constexpr QByteArrayView named("\bb\ff\nn\rr\tt\"\"\\\\");
    for (qsizetype i = 0; i < named.size(); i += 2) {
        if (byte == named[i]) {
            *out++ = '\\';
            *out++ = named[i + 1];
            return out;
        }
    }
    if (uchar(byte) >= 0x20) {
        *out++ = byte;
        return out;
    }
    for (const char c : {'\\', 'u', '0', '0', digits[uchar(byte) >> 4], digits[byte & 0xF]})
        *out++ = c;
    return out;
}

} // namespace

char *JsonText::room(qsizetype size)
{
    if (m_text.size() < m_size + size)
        m_text.resize(2 * (m_size + size));
    return m_text.data() + m_size;
}

void JsonText::raw(QByteArrayView json)
{
    std::copy(json.begin(), json.end(), room(json.size()));
    m_size += json.size();
}

void JsonText::string(QStringView text)
{
    char *out = room(text.size() + 2);
    *out++ = '"';
    const char16_t *from = text.utf16();
    qsizetype plain = 0;
    for (; plain + 4 <= text.size() && areFourPlain(from + plain); plain += 4) {
        for (int i = 0; i < 4; ++i)
            *out++ = char(from[plain + i]);
    }
    while (plain < text.size() && isPlain(from[plain]))
        *out++ = char(from[plain++]);
    m_size += plain + 1;
    if (plain < text.size())
        escaped(text.mid(plain));
    raw("\"");
}

void JsonText::escaped(QStringView text)
{
    m_isExact = m_isExact && text.isValidUtf16();
    const QByteArray utf8 = text.toUtf8();
    char *const start = room(6 * utf8.size());
    char *out = start;
    for (const char byte : utf8)
        out = writeEscaped(out, byte);
    m_size += out - start;
}

void JsonText::number(double value)
{
    m_isExact = m_isExact && std::isfinite(value);
    raw(json::dump(json::number(value)));
}

QByteArray JsonText::take()
{
    m_text.truncate(m_size);
    return std::move(m_text);
}

} // namespace quillbay
