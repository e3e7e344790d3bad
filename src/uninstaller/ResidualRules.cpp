#include "uninstaller/ResidualRules.h"

#include <algorithm>

namespace quillbay {

namespace {

/// The text if something may match it, else nothing.
QString usable(const QString &text)
{
    const bool isNothing = text.trimmed().isEmpty() || text.contains(QChar::ReplacementCharacter);
    return isNothing ? QString() : text.normalized(QString::NormalizationForm_C);
}

QString lowered(const QByteArray &entry)
{
    return QString::fromUtf8(entry).normalized(QString::NormalizationForm_C).toLower();
}

bool contains(const QString &entry, const QString &text)
{
    return !text.isEmpty() && entry.contains(text);
}

} // namespace

ResidualRules::ResidualRules(const ResidualNames &names)
    : m_name(usable(names.name).toLower())
    , m_identifier(usable(names.identifier).toLower())
    , m_exactPrograms(names.programNames)
{
    for (const QString &name : names.wholeNames) {
        if (const QString text = usable(name); !text.isEmpty())
            m_wholeNames += text.toLower();
    }
    if (!m_identifier.isEmpty())
        m_exactIdentifier = QStringList(names.identifier);
    for (const QString &segment : usable(names.identifier).split(u'.').mid(1)) {
        if (const QString text = usable(segment); !text.isEmpty())
            m_segments += text;
    }
}

bool ResidualRules::matchesApplication(const QByteArray &entry) const
{
    const QString name = lowered(entry);
    return contains(name, m_name) || contains(name, m_identifier) || m_wholeNames.contains(name);
}

bool ResidualRules::matchesName(const QByteArray &entry) const
{
    return contains(lowered(entry), m_name);
}

bool ResidualRules::matchesIdentifier(const QByteArray &entry) const
{
    return contains(lowered(entry), m_identifier);
}

bool ResidualRules::matchesSegment(const QByteArray &entry) const
{
    const QString name = lowered(entry);
    return std::any_of(m_segments.begin(), m_segments.end(),
                       [&](const QString &segment) { return name.contains(segment); });
}

QList<QByteArray> ResidualRules::pathsOf(const platform::NamedChild &child) const
{
    const bool byIdentifier = child.name == platform::NamedChild::Name::Identifier;
    QList<QByteArray> paths;
    for (const QString &name : byIdentifier ? m_exactIdentifier : m_exactPrograms) {
        const bool isUsable = !usable(name).isEmpty() && !name.startsWith(u'.') && !name.contains(u'/') &&
                              !name.contains(QChar(u'\0'));
        const QByteArray path = child.folder + '/' + name.toUtf8() + child.suffix;
        if (isUsable && !paths.contains(path))
            paths += path;
    }
    return paths;
}

} // namespace quillbay
