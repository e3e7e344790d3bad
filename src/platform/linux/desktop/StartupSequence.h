#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace quillbay::platform {

/// What the Startup Notification protocol (version 0.1) asks of a program that was started or called with a
/// startup id: pure functions over the texts of the protocol.

/// X11 time of the user's action in milliseconds, from the "_TIME" that ends a startup id; nothing if there
/// is none.
std::optional<quint32> startupTime(const QString &startupId);

/// The text that ends the start-up sequence of `startupId`, quoted as the protocol wants it.
QByteArray startupFinishedText(const QString &startupId);

/// `text` and its final zero in the pieces of 20 bytes that one X11 client message carries, the last one
/// padded with zeros.
QList<QByteArray> clientMessagePieces(const QByteArray &text);

} // namespace quillbay::platform
