#pragma once

#include "support/PrivateBus.h"

#include <QDBusContext>
#include <QDBusObjectPath>
#include <QHash>
#include <QObject>
#include <QStringList>

namespace quillbay::testing {

/// A fingerprint service that the test scripts, with one reader. It keeps the rules of the real one: who has
/// not claimed the reader cannot use it, and who claims it twice or starts a second verification is refused.
/// On a connection of its own: the end of the object is the end of a process.
class FakeFprintd : public QObject
{
    Q_OBJECT

public:
    explicit FakeFprintd(PrivateBus &bus);
    ~FakeFprintd() override;

    bool present = true;
    QStringList fingers{QStringLiteral("right-index-finger")};
    /// What each verification reports from its start on, until one that ends it; with none left it waits.
    QStringList results;
    QHash<QString, QString> refusals; ///< Error names by method.
    QString silentMethod;             ///< Is carried out, and never answered.

    QStringList calls; ///< Methods on the reader, in order, `ListEnrolledFingers` left out.
    bool isClaimed() const { return !claimer.isEmpty(); }
    bool isVerifying = false;
    QString claimer;

    /// The finger's next result, for a verification that waits.
    void report(const QString &result);

    static const QString readerPath;

private:
    void reportNext();

    friend class FakeReader;
    PrivateBus &m_bus;
    QDBusConnection m_connection;
};

/// The service's objects on the bus.
class FakeManager : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "net.reactivated.Fprint.Manager")

public:
    explicit FakeManager(FakeFprintd &service);

public Q_SLOTS:
    QDBusObjectPath GetDefaultDevice();

private:
    FakeFprintd &m_service;
};

class FakeReader : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "net.reactivated.Fprint.Device")

public:
    explicit FakeReader(FakeFprintd &service);

public Q_SLOTS:
    QStringList ListEnrolledFingers(const QString &user);
    void Claim(const QString &user);
    void Release();
    void VerifyStart(const QString &finger);
    void VerifyStop();

private:
    /// Whether the method is to be carried out; if not, it has been refused.
    bool begins(const char *method, const char *refusal = nullptr);
    bool isStranger() const;

    FakeFprintd &m_service;
};

} // namespace quillbay::testing
