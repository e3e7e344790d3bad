#include "ui/vocabulary/ColorHex.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <limits>

namespace quillbay {

namespace {

bool isAlphanumeric(char32_t character)
{
    return QChar::isLetterOrNumber(character) || QChar::isMark(character);
}

// Code points, for a letter outside the basic plane is one character and no pair to cut apart.
QList<uint> trimmed(QStringView text)
{
    const QList<uint> all = text.toUcs4();
    const auto first = std::find_if(all.begin(), all.end(), isAlphanumeric);
    const auto last = std::find_if(all.rbegin(), std::make_reverse_iterator(first), isAlphanumeric).base();
    return QList<uint>(first, last);
}

// Characters as a reader counts them: a letter with its combining marks is one.
int characterCount(const QList<uint> &codePoints)
{
    const auto isAscii = [](uint character) { return character < 0x80; };
    if (std::all_of(codePoints.begin(), codePoints.end(), isAscii))
        return int(codePoints.size());
    const QString text =
        QString::fromUcs4(reinterpret_cast<const char32_t *>(codePoints.data()), codePoints.size());
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

int digitValue(uint character)
{
    if (character >= '0' && character <= '9')
        return int(character - '0');
    if (character >= 'a' && character <= 'f')
        return int(character - 'a') + 10;
    if (character >= 'A' && character <= 'F')
        return int(character - 'A') + 10;
    return -1;
}

quint64 scannedNumber(const QList<uint> &text)
{
    const bool prefixed = text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    quint64 number = 0;
    for (qsizetype i = prefixed ? 2 : 0; i < text.size(); ++i) {
        const int digit = digitValue(text[i]);
        if (digit < 0)
            break;
        if (number > std::numeric_limits<quint64>::max() >> 4)
            return std::numeric_limits<quint64>::max();
        number = number << 4 | quint64(digit);
    }
    return number;
}

} // namespace

int colorDigitCount(QStringView text)
{
    return characterCount(trimmed(text));
}

QColor colorFromHex(QStringView text)
{
    const QList<uint> digits = trimmed(text);
    const quint64 number = scannedNumber(digits);
    const auto byte = [number](int shift) { return int(number >> shift & 0xff); };
    const auto doubled = [number](int shift) { return int(number >> shift & 0xf) * 17; };
    switch (characterCount(digits)) {
    case 3:
        return QColor(doubled(8), doubled(4), doubled(0));
    case 6:
        return QColor(byte(16), byte(8), byte(0));
    case 8:
        return QColor(byte(16), byte(8), byte(0), byte(24));
    default:
        return QColor(1, 1, 0, 1);
    }
}

} // namespace quillbay
