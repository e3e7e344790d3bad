#include "platform/linux/desktop/StartupSequence.h"

namespace quillbay::platform {

std::optional<quint32> startupTime(const QString &startupId)
{
    const QLatin1String marker("_TIME");
    const qsizetype at = startupId.lastIndexOf(marker);
    if (at < 0)
        return std::nullopt;
    bool ok = false;
    const quint32 time = QStringView(startupId).mid(at + marker.size()).toUInt(&ok);
    return ok ? std::optional(time) : std::nullopt;
}

QByteArray startupFinishedText(const QString &startupId)
{
    QByteArray text("remove: ID=\"");
    for (const char byte : startupId.toUtf8()) {
        if (byte == '"' || byte == '\\')
            text += '\\';
        text += byte;
    }
    return text + '"';
}

QList<QByteArray> clientMessagePieces(const QByteArray &text)
{
    constexpr qsizetype pieceSize = 20;
    QList<QByteArray> pieces;
    for (qsizetype at = 0; at <= text.size(); at += pieceSize)
        pieces.append(text.mid(at, pieceSize).leftJustified(pieceSize, '\0'));
    return pieces;
}

} // namespace quillbay::platform
