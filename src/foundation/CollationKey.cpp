#include "foundation/CollationKey.h"

#include <QVarLengthArray>
#include <QtEndian>

#include <algorithm>

#include <unicode/ucol.h>

namespace quillbay {

void CollationKey::Maker::Close::operator()(UCollator *collator) const
{
    ucol_close(collator);
}

CollationKey::Maker::Maker(const QLocale &locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const QByteArray name =
        locale.language() == QLocale::C ? QByteArray("root") : locale.bcp47Name().toLatin1();
    m_collator.reset(ucol_open(name.constData(), &status));
    if (U_FAILURE(status)) {
        m_collator.reset();
        return;
    }
    // The attributes that QCollator sets for a comparison without regard to case.
    ucol_setStrength(m_collator.get(), UCOL_SECONDARY);
    ucol_setAttribute(m_collator.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
    ucol_setAttribute(m_collator.get(), UCOL_NUMERIC_COLLATION, UCOL_OFF, &status);
    ucol_setAttribute(m_collator.get(), UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, &status);
    if (U_FAILURE(status))
        m_collator.reset();
}

QByteArray CollationKey::Maker::operator()(QStringView text) const
{
    // Without collation data the order of the folded UTF-8 bytes is what is left.
    if (!m_collator)
        return text.toString().toCaseFolded().toUtf8();
    if (text.isEmpty())
        return {};
    QVarLengthArray<uint8_t, 256> key(256);
    const auto *utf16 = reinterpret_cast<const UChar *>(text.utf16());
    const auto make = [&] {
        return ucol_getSortKey(m_collator.get(), utf16, int32_t(text.size()), key.data(),
                               int32_t(key.size()));
    };
    int32_t size = make();
    if (size > key.size()) {
        key.resize(size);
        size = make();
    }
    // ICU ends a key with a zero byte, which no key contains.
    return QByteArray(reinterpret_cast<const char *>(key.constData()), qMax(0, size - 1));
}

std::vector<size_t> CollationKey::sortedOrder(const std::vector<QByteArrayView> &keys)
{
    struct Place
    {
        quint64 start; ///< Of the key, so that most comparisons are one of integers.
        size_t index;
    };
    std::vector<Place> places(keys.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        quint64 start = 0;
        std::copy_n(keys[i].data(), std::min(keys[i].size(), qsizetype(sizeof start)),
                    reinterpret_cast<char *>(&start));
        places[i] = {qFromBigEndian(start), i};
    }
    std::sort(places.begin(), places.end(), [&keys](const Place &a, const Place &b) {
        if (a.start != b.start)
            return a.start < b.start;
        const int order = keys[a.index].compare(keys[b.index]);
        return order != 0 ? order < 0 : a.index < b.index;
    });
    std::vector<size_t> result;
    result.reserve(places.size());
    for (const Place &place : places)
        result.push_back(place.index);
    return result;
}

} // namespace quillbay
