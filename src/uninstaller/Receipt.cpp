#include "uninstaller/Receipt.h"

#include "foundation/JsonFields.h"

namespace quillbay {

namespace {

constexpr char scheme[] = "file://";

std::string methodName(DeletionMethod method)
{
    return method == DeletionMethod::Trash ? "trash" : "permanent";
}

std::optional<RemovalRecord> recordOf(const json::Object &object)
{
    const QString method = object.string("method");
    const QByteArray url = object.string("from").toLatin1();
    const QDateTime when = QDateTime::fromString(object.string("when"), Qt::ISODateWithMs);
    if (!url.startsWith(scheme) || !when.isValid() || (method != u"trash" && method != u"permanent"))
        return std::nullopt;
    RemovalRecord record;
    record.displayName = object.string("what");
    record.path = QByteArray::fromPercentEncoding(url.mid(qsizetype(sizeof scheme) - 1));
    record.method = method == u"trash" ? DeletionMethod::Trash : DeletionMethod::Permanent;
    record.isElevated = object.boolean("elevated");
    record.bytes = object.integer("bytes");
    record.when = when;
    if (object.has("inode")) {
        record.file.device = object.string("device").toULongLong();
        record.file.inode = object.string("inode").toULongLong();
        record.file.kind = quint32(object.integer("kind"));
    }
    return record;
}

} // namespace

QByteArray encodeRecord(const RemovalRecord &record)
{
    json::Json object = {
        {"what", json::text(record.displayName)},
        {"from", scheme + record.path.toPercentEncoding("/").toStdString()},
        {"method", methodName(record.method)},
        {"elevated", record.isElevated},
        {"bytes", record.bytes},
        {"when", json::text(record.when.toUTC().toString(Qt::ISODateWithMs))},
    };
    if (record.method == DeletionMethod::Trash) {
        object["device"] = std::to_string(record.file.device);
        object["inode"] = std::to_string(record.file.inode);
        object["kind"] = record.file.kind;
    }
    return json::dump(object);
}

std::optional<RemovalRecord> decodeRecord(const QByteArray &line)
{
    std::optional<RemovalRecord> record;
    try {
        const json::Json value = json::parse(line);
        record = recordOf(json::Object(value));
    } catch (const json::Error &) {
        return std::nullopt;
    }
    return record;
}

} // namespace quillbay
