#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace quillbay {

/// The user's preferences: typed values by key, in domains of their own: "standard", and the suites by their
/// names.
///
/// A read answers nothing where there is no value, or one of another type. Every read looks into the file, so
/// it sees what another process wrote; it takes some microseconds. Arrays and dictionaries are decoded anew
/// only where their text has changed: the same text gives the same implicitly shared value, so that a value
/// of thousands of entries costs a comparison of bytes, to read and to write again.
///
/// A change is committed when the setter returns, and then survives the sudden end of the program, though the
/// last ones perhaps not that of the machine. The setters answer whether it is on disk. They never throw, and
/// print their failure themselves, so a caller with no other way to go may ignore the answer. Where the file
/// cannot be written at all, the preferences live in memory until the program ends: reads then see the
/// changes, and the setters answer false. A damaged file is set aside under another name, and an empty one
/// begun.
///
/// An object is a view: copies and suites share one connection, which closes with the last of them.
/// Thread: the one that made the first view. Another thread makes a store of its own on the same path, as
/// another process would.
class PreferenceStore
{
public:
    /// The preferences in the file at `path`; what is missing on the way to it is made.
    explicit PreferenceStore(const QString &path = defaultPath());

    /// $XDG_CONFIG_HOME/quillbay/preferences.sqlite, or what the desktop has instead.
    static QString defaultPath();

    /// The domain `name` of the same file.
    PreferenceStore suite(const QString &name) const;

    std::optional<QByteArray> data(const QString &key) const;
    std::optional<QString> string(const QString &key) const;
    std::optional<QStringList> stringArray(const QString &key) const;
    std::optional<QJsonObject> dictionary(const QString &key) const;
    std::optional<bool> boolean(const QString &key) const;
    std::optional<double> doubleValue(const QString &key) const;

    /// Each replaces a value of whatever type; an equal value costs no write to the disk. Text is kept as
    /// UTF-8: half a surrogate pair becomes U+FFFD.
    bool setData(const QString &key, const QByteArray &value);
    bool setString(const QString &key, const QString &value);
    bool setStringArray(const QString &key, const QStringList &value);
    /// Kept as JSON: a number in it that is not finite becomes null.
    bool setDictionary(const QString &key, const QJsonObject &value);
    bool setBoolean(const QString &key, bool value);
    /// Refuses what is not a number; infinities are kept.
    bool setDouble(const QString &key, double value);
    /// True as well where there was no value.
    bool remove(const QString &key);

    /// The file, as it was given: for a store of another thread.
    QString path() const;
    /// Whether nothing can be kept beyond the session.
    bool isInMemory() const;

private:
    struct Connection;

    PreferenceStore(std::shared_ptr<Connection> connection, const QString &domain);

    std::shared_ptr<Connection> m_connection;
    QString m_domain;
};

} // namespace quillbay
