#pragma once

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QStringList>

namespace quillbay::testing {

/// A fingerprint service that the test scripts, with one reader. It keeps the rules of the real one: who has
/// not claimed the reader cannot use it, and who claims it twice or starts a second verification is refused.
/// On a connection of its own: the end of the object is the end of a process.
class FakeFprintd : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit FakeFprintd(PrivateBus &bus);
    ~FakeFprintd() override;

    bool present = true;
    QStringList fingers{QStringLiteral("right-index-finger")};
    /// What each verification reports from its start on, until one that ends it; with none left it waits.
    QStringList results;
    QHash<QString, QString> refusals; ///< Errors by method.
    QString silentMethod;             ///< Is carried out, and never answered.

    QStringList calls; ///< What was called to use the reader, in order.
    QString claimer;   ///< Empty while it is free.
    bool isVerifying = false;

    /// The finger's next result, for a verification that waits.
    void report(const QString &result);

    static const QString readerPath;

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    /// The error that a call is refused with, or empty.
    QString refusal(const QDBusMessage &message) const;
    void carryOut(const QDBusMessage &message);
    void reportNext();

    PrivateBus &m_bus;
    QDBusConnection m_connection;
};

} // namespace quillbay::testing
