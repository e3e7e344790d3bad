#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QEventLoop>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <chrono>

namespace quillbay::platform {

/// One transaction of the PackageKit service (`org.freedesktop.PackageKit.Transaction`), from its creation to
/// its end. Lives on the worker's thread that runs it.
class PackageKitTransaction : public QObject
{
    Q_OBJECT

public:
    enum class End {
        Succeeded,
        Unavailable,   ///< The service could not be reached; nothing was begun.
        NotAuthorised, ///< Also when the user dismissed the question: the service does not tell them apart.
        Cancelled,
        Failed,
        TimedOut, ///< It was asked to give up.
    };

    struct Listed
    {
        quint32 information = 0; ///< The service's PkInfoEnum.
        QString id;              ///< "name;version;architecture;data"
    };

    explicit PackageKitTransaction(const QDBusConnection &bus);

    /// Begins a transaction, calls `method` on it and waits for its end.
    End run(const QString &method, const QVariantList &arguments, bool isInteractive,
            std::chrono::milliseconds limit);

    const QList<Listed> &packages() const { return m_packages; }
    /// What the service said of a failure, for the user.
    QString text() const { return m_text; }

private Q_SLOTS:
    void onPackage(quint32 information, const QString &id, const QString &summary);
    void onErrorCode(quint32 code, const QString &details);
    void onFinished(quint32 exit, quint32 milliseconds);

private:
    bool begin(std::chrono::milliseconds limit);
    void call(const QString &method, const QVariantList &arguments, std::chrono::milliseconds limit);
    QDBusMessage message(const QString &method) const;
    void stop(End end, const QString &text = {});

    QDBusConnection m_bus;
    QEventLoop m_loop;
    QString m_service; ///< The unique name, so that no other peer can speak for it.
    QString m_path;
    QList<Listed> m_packages;
    End m_end = End::Failed;
    QString m_text;
    quint32 m_errorCode = 0;
    bool m_isStopped = false;
};

} // namespace quillbay::platform
