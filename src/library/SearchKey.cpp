#include "library/SearchKey.h"

#include <QLocale>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

namespace quillbay {

QString searchKey(const QString &text)
{
    const QString composed = text.normalized(QString::NormalizationForm_C);
    const QLocale::Language language = QLocale().language();
    const bool tellsDots = language == QLocale::Turkish || language == QLocale::Azerbaijani;
    const auto fold = [&composed, tellsDots](QString &into) {
        UErrorCode status = U_ZERO_ERROR;
        const int length =
            u_strFoldCase(reinterpret_cast<UChar *>(into.data()), int(into.size()),
                          reinterpret_cast<const UChar *>(composed.utf16()), int(composed.size()),
                          tellsDots ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT, &status);
        into.resize(length);
        return U_SUCCESS(status);
    };
    QString folded(composed.size(), Qt::Uninitialized);
    // A character can fold into up to three; the first try then only tells the length.
    return fold(folded) || fold(folded) ? folded : composed;
}

} // namespace quillbay
