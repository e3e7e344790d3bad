#pragma once

#include "platform/ResidualRoots.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace quillbay {

/// What an application is called where the names of files are compared with it.
struct ResidualNames
{
    QString name;
    QString identifier;       ///< Empty: there is none.
    QStringList wholeNames;   ///< As in `platform::ApplicationFacts`.
    QStringList programNames; ///< As in `platform::ApplicationFacts`.
};

/// Which entries of a folder belong to an application, by their names alone.
///
/// An entry's name matches a text if it contains it, both in lower case: no shortest length, no word
/// boundary, no list of exceptions, so that "Notes" takes every entry with those five letters in its name.
/// That finds too much rather than too little; the user trims the result. Texts are compared in their
/// composed form, so that an accent that a file system took apart still matches.
///
/// Nothing matches a text that is empty or only white space, or that has a replacement character in it:
/// nobody knows what bytes that stood for. Entries are the file system's own bytes; where they are no UTF-8
/// the rest of the name is compared. Thread-safe.
class ResidualRules
{
public:
    explicit ResidualRules(const ResidualNames &names);

    bool hasIdentifier() const { return !m_identifier.isEmpty(); }

    /// The name or the identifier is contained in the entry's name, or one of the whole names is it.
    bool matchesApplication(const QByteArray &entry) const;
    bool matchesName(const QByteArray &entry) const;
    bool matchesIdentifier(const QByteArray &entry) const;
    /// One of the identifier's parts between dots, the first left out, is contained in the entry's name in
    /// lower case. The parts stay as they are: one with a capital letter in it matches nothing.
    bool matchesSegment(const QByteArray &entry) const;

    /// The path of each such child, where its name can be one of a single visible entry; none with "/" in it,
    /// none that begins with a dot.
    QList<QByteArray> pathsOf(const platform::NamedChild &child) const;

private:
    QString m_name; ///< Lower case, as all that is compared; empty matches nothing.
    QString m_identifier;
    QStringList m_wholeNames;
    QStringList m_segments;
    QStringList m_exactIdentifier; ///< As given: of one element, or none.
    QStringList m_exactPrograms;
};

} // namespace quillbay
