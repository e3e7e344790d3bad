#pragma once

#include <QString>
#include <QUuid>

#include <optional>

namespace quillbay {

/// The canonical text of an identifier: 36 characters, hyphenated, upper case. The one form that is stored.
QString uuidString(const QUuid &id);

/// Parses the hyphenated form of 36 hexadecimal characters in either case; braces, spaces and shorter forms
/// are not identifiers.
std::optional<QUuid> uuidFromString(QStringView text);

} // namespace quillbay
