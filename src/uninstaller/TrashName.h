#pragma once

#include <QByteArray>

class QUuid;

namespace quillbay {

/// The name for the Trash of what is called `name` when that is taken there: `report.log` becomes
/// `report_3F2504E0.log`, a name without an extension `report_3F2504E0`, by the first 8 characters of `id`.
/// A leading dot begins no extension. The stem is cut where a file system would not take the name, or not the
/// one of its record (`.trashinfo` behind it), in its 255 bytes.
QByteArray uniqueTrashName(const QByteArray &name, const QUuid &id);

} // namespace quillbay
