#pragma once

#include <QByteArray>
#include <QStringView>

namespace quillbay {

/// JSON written straight into one buffer, for lists of which the JSON library's tree would cost more than the
/// text. Byte for byte what `json::dump` makes of the same values.
class JsonText
{
public:
    /// Punctuation, keys and whatever else is JSON already.
    void raw(QByteArrayView json);
    /// Quoted and escaped. What is no valid UTF-16 is replaced.
    void string(QStringView text);
    /// Without a fraction where it has none; null where it is not finite.
    void number(double value);
    void number(qint64 value) { raw(QByteArray::number(value)); }

    /// Whether all that was written can be read back as it was given.
    bool isExact() const { return m_isExact; }
    /// The text so far. Nothing may be written afterwards.
    QByteArray take();

private:
    /// Where the next `size` bytes go; whoever writes fewer says so by `m_size`.
    char *room(qsizetype size);
    void escaped(QStringView text);

    QByteArray m_text; ///< Larger than what was written: growing it for each piece costs more than the piece.
    qsizetype m_size = 0;
    bool m_isExact = true;
};

} // namespace quillbay
