#include "platform/linux/launching/ExecLine.h"

#include <optional>

namespace quillbay::platform {

namespace {

struct Word
{
    QString text;
    bool present = false; // An empty pair of quotes is an argument too.

    void add(QChar character)
    {
        text.append(character);
        present = true;
    }
};

bool isSeparator(QChar character)
{
    return character == u' ' || character == u'\t' || character == u'\n' || character == u'\r';
}

class Splitter
{
public:
    explicit Splitter(const QString &line)
        : m_line(line)
    {
    }

    // The words of the line, or nothing if a quote stays open.
    std::optional<QStringList> words()
    {
        QStringList result;
        Word word;
        while (m_at < m_line.size()) {
            const QChar character = m_line.at(m_at++);
            if (isSeparator(character))
                finish(word, result);
            else if (character == u'"' || character == u'\'') {
                if (!quoted(character, word))
                    return std::nullopt;
            } else if (character != u'\\')
                word.add(character);
            else if (m_at < m_line.size())
                word.add(m_line.at(m_at++));
            else
                return std::nullopt;
        }
        finish(word, result);
        return result;
    }

private:
    static void finish(Word &word, QStringList &result)
    {
        if (word.present)
            result.append(word.text);
        word = {};
    }

    bool quoted(QChar quote, Word &word)
    {
        word.present = true;
        while (m_at < m_line.size()) {
            QChar character = m_line.at(m_at++);
            if (character == quote)
                return true;
            if (character == u'\\' && quote == u'"' && m_at < m_line.size() &&
                QStringView(u"\"`$\\").contains(m_line.at(m_at)))
                character = m_line.at(m_at++);
            word.add(character);
        }
        return false;
    }

    const QString &m_line;
    qsizetype m_at = 0;
};

// Appends what one word stands for; false if it has a code that the specification does not know.
bool expand(const QString &word, const ExecFields &fields, QStringList &arguments)
{
    if (word == QLatin1String("%i")) {
        if (!fields.icon.isEmpty())
            arguments << QStringLiteral("--icon") << fields.icon;
        return true;
    }
    QString text;
    bool vanished = false;
    for (qsizetype i = 0; i < word.size(); ++i) {
        if (word.at(i) != u'%') {
            text.append(word.at(i));
            continue;
        }
        const QChar code = ++i < word.size() ? word.at(i) : QChar();
        if (code == u'%')
            text.append(code);
        else if (code == u'c')
            text.append(fields.name);
        else if (code == u'k')
            text.append(fields.path);
        else if (!code.isNull() && QStringView(u"fFuUidDnNvm").contains(code))
            vanished = true;
        else
            return false;
    }
    if (!text.isEmpty() || !vanished)
        arguments.append(text);
    return true;
}

ExecLine invalid(const QString &error)
{
    return {{}, error};
}

} // namespace

ExecLine parseExecLine(const QString &exec, const ExecFields &fields)
{
    if (exec.contains(QChar(u'\0')))
        return invalid(QStringLiteral("the command line has a zero character"));
    const std::optional<QStringList> words = Splitter(exec).words();
    if (!words)
        return invalid(QStringLiteral("the command line ends inside a quotation"));
    ExecLine result;
    for (const QString &word : *words) {
        if (!expand(word, fields, result.arguments))
            return invalid(QStringLiteral("unknown field code in \"%1\"").arg(word));
    }
    if (result.arguments.isEmpty() || result.arguments.constFirst().isEmpty())
        return invalid(QStringLiteral("the command line names no program"));
    return result;
}

} // namespace quillbay::platform
