#pragma once

#include "foundation/PreferenceStore.h"

#include <QByteArray>
#include <QString>

namespace quillbay::testing {

/// The numbered records that a writing process leaves and a test looks for. Number, key, type, size and
/// content follow from each other; both halves repeat the number, so that a value made of two writes is told
/// from either.
class PreferenceRecord
{
public:
    static constexpr int KeyCount = 6;

    explicit PreferenceRecord(int number)
        : m_number(number)
    {
    }

    QString key() const { return QStringLiteral("record%1").arg(m_number % KeyCount); }

    bool write(PreferenceStore &store) const
    {
        switch (m_number % 3) {
        case 0:
            return store.setData(key(), content());
        case 1:
            return store.setString(key(), QString::fromLatin1(content()));
        default:
            return store.setStringArray(key(), array());
        }
    }

    bool isIn(const PreferenceStore &store) const
    {
        switch (m_number % 3) {
        case 0:
            return store.data(key()) == content();
        case 1:
            return store.string(key()) == QString::fromLatin1(content());
        default:
            return store.stringArray(key()) == array();
        }
    }

private:
    QByteArray half() const
    {
        const QByteArray word = QByteArray::number(m_number) + ',';
        return word.repeated(1 + (m_number * 7919) % 4000);
    }
    QByteArray content() const { return half() + '|' + half(); }
    QStringList array() const { return {QString::fromLatin1(half()), QString::fromLatin1(half())}; }

    int m_number;
};

} // namespace quillbay::testing
