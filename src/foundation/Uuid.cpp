#include "foundation/Uuid.h"

namespace quillbay {

QString uuidString(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> uuidFromString(QStringView text)
{
    if (text.size() != 36)
        return std::nullopt;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
        const bool digit = (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
        if (hyphen ? c != u'-' : !digit)
            return std::nullopt;
    }
    return QUuid::fromString(text);
}

} // namespace quillbay
