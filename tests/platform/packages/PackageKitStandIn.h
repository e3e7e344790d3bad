#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

namespace quillbay::testing {

class TransactionStandIn;

/// Stands in for PackageKit on a bus and answers as told.
class PackageKitStandIn : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PackageKit")

public:
    struct Answer
    {
        std::vector<std::pair<quint32, QString>> packages; ///< Information and identifier.
        quint32 errorCode = 0;
        QString details;
        quint32 exit = 1;
        /// Instead of all that: take the call and say nothing.
        bool isSilent = false;
        /// Instead of all that: answer the call with this D-Bus error.
        QString refusal;
        /// Before the answer; what the world does meanwhile.
        std::function<void()> first;
    };

    /// Puts the object and the name on the bus.
    explicit PackageKitStandIn(const QDBusConnection &bus);
    ~PackageKitStandIn() override;

    Answer resolve;
    Answer simulation;
    Answer removal;
    bool refusesTransactions = false;
    /// "Resolve …", "SetHints …", "RemovePackages flags ids deps autoremove", "Cancel".
    QStringList calls;

    /// Takes the name off the bus, as a crash does.
    void vanish();
    QDBusConnection bus() const { return m_bus; }

public Q_SLOTS:
    QDBusObjectPath CreateTransaction();

private:
    QDBusConnection m_bus;
    int m_count = 0;
};

class TransactionStandIn : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PackageKit.Transaction")

public:
    explicit TransactionStandIn(PackageKitStandIn *service);

public Q_SLOTS:
    void SetHints(const QStringList &hints);
    void Resolve(qulonglong filter, const QStringList &names);
    void RemovePackages(qulonglong flags, const QStringList &ids, bool allowDependents, bool autoremove);
    void Cancel();

Q_SIGNALS:
    void Package(uint information, const QString &id, const QString &summary);
    void ErrorCode(uint code, const QString &details);
    void Finished(uint exit, uint milliseconds);

private:
    void give(const PackageKitStandIn::Answer &answer);

    PackageKitStandIn *m_service;
};

} // namespace quillbay::testing
