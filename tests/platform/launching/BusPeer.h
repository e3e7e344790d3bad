#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <vector>

namespace quillbay::testing {

/// A program on the bus that takes every call to a name, records it, and answers with nothing or with an
/// error.
class BusPeer : public QDBusVirtualObject
{
public:
    /// `root` is the object that takes the calls, with all below it.
    BusPeer(QDBusConnection connection, const QString &name, const QString &root);

    QString error; ///< Name of the error to answer with; empty: success.
    std::vector<QDBusMessage> calls;

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
};

} // namespace quillbay::testing
