#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QLocale>
#include <QStringView>

#include <memory>
#include <vector>

struct UCollator;

namespace quillbay {

/// Binary keys whose `memcmp` order is the order of the texts in the collation of a locale, case ignored:
/// what `QCollator` with `Qt::CaseInsensitive` answers pair by pair, computed once per text.
/// `QCollatorSortKey` is no substitute, because it does not give its bytes away. Texts that differ in case
/// alone have equal keys.
class CollationKey
{
public:
    /// Makes keys of one locale. Making a maker costs some tens of microseconds; keep one for many texts.
    ///
    /// Thread: one maker may be used by several threads at once.
    class Maker
    {
    public:
        /// The default collates as the program's locale does (`LC_COLLATE` where that is the system's).
        explicit Maker(const QLocale &locale = QLocale().collation());

        /// The key of `text`. Empty for the empty text, which therefore comes first.
        QByteArray operator()(QStringView text) const;

    private:
        struct Close
        {
            void operator()(UCollator *collator) const;
        };
        std::unique_ptr<UCollator, Close> m_collator;
    };

    /// The indices of `keys` in the order of the keys; equal keys stay in the order in which they stand. For
    /// sorting what the keys belong to without moving it about: ten times as fast as a stable sort of the
    /// items.
    static std::vector<size_t> sortedOrder(const std::vector<QByteArrayView> &keys);
};

} // namespace quillbay
