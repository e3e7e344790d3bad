#include "tools/CodeSnippets.h"

#include "library/SearchKey.h"
#include "tools/Clipboard.h"

#include <QTimer>

#include <algorithm>

namespace quillbay {

namespace {

const QString usualLanguage = QStringLiteral("Swift");

} // namespace

void CodeSnippets::setStorage(WorkspaceStorage *storage)
{
    if (!storage || m_storage)
        return;
    m_storage = storage;
    connect(storage, &WorkspaceStorage::codeSnippetsChanged, this, &CodeSnippets::update);
    Q_EMIT storageChanged();
    update();
}

void CodeSnippets::setSnippetSearch(const QString &text)
{
    if (text == m_snippetSearch)
        return;
    m_snippetSearch = text;
    Q_EMIT snippetSearchChanged();
    update();
}

QList<CodeSnippet> CodeSnippets::filteredSnippets() const
{
    if (!m_storage)
        return {};
    QList<CodeSnippet> snippets = m_storage->codeSnippets();
    if (!m_snippetSearch.isEmpty()) {
        const QString key = searchKey(m_snippetSearch);
        snippets.removeIf(
            [&key](const CodeSnippet &snippet) { return !searchKey(snippet.title).contains(key); });
    }
    return snippets;
}

const CodeSnippet *CodeSnippets::at(int row) const
{
    return row >= 0 && row < count() ? &m_snippets[row] : nullptr;
}

void CodeSnippets::update()
{
    const QList<CodeSnippet> wanted = filteredSnippets();
    const int before = count();
    const auto removeRow = [this](int row) {
        beginRemoveRows({}, row, row);
        m_snippets.removeAt(row);
        endRemoveRows();
    };
    for (int row = before - 1; row >= 0; --row) {
        if (!wanted.contains(m_snippets[row]))
            removeRow(row);
    }
    for (int row = 0; row < wanted.size(); ++row) {
        if (row < count() && m_snippets[row] == wanted[row])
            continue;
        beginInsertRows({}, row, row);
        m_snippets.insert(row, wanted[row]);
        endInsertRows();
    }
    while (count() > wanted.size())
        removeRow(count() - 1);
    if (count() != before)
        Q_EMIT countChanged();
}

void CodeSnippets::saveForm()
{
    if (!m_storage || m_newTitle.isEmpty() || m_newCode.isEmpty())
        return;
    m_storage->setCodeSnippets(
        m_storage->codeSnippets() +
        QList<CodeSnippet>{{QUuid::createUuid(), m_newTitle, m_newCode, m_newLanguage}});
    m_storage->saveSnippets();
    m_newTitle.clear();
    m_newCode.clear();
    m_newLanguage = usualLanguage;
    m_showCreateForm = false;
    Q_EMIT formChanged();
}

void CodeSnippets::toggleExpanded(int row)
{
    const CodeSnippet *snippet = at(row);
    if (!snippet)
        return;
    m_expandedSnippetID = m_expandedSnippetID == snippet->id ? QUuid() : snippet->id;
    Q_EMIT dataChanged(index(0), index(count() - 1), {IsExpandedRole});
}

void CodeSnippets::copy(int row)
{
    const CodeSnippet *snippet = at(row);
    if (!snippet)
        return;
    copyToClipboard(snippet->code);
    setCopyMessage(tr("Snippet Copied!"));
    QTimer::singleShot(messageTime, this, [this] { setCopyMessage({}); });
}

void CodeSnippets::setCopyMessage(const QString &message)
{
    if (message == m_copyMessage)
        return;
    m_copyMessage = message;
    Q_EMIT copyMessageChanged();
}

void CodeSnippets::remove(int row)
{
    const CodeSnippet *listed = at(row);
    if (!listed)
        return;
    QList<CodeSnippet> snippets = m_storage->codeSnippets();
    const auto stored = std::find_if(snippets.cbegin(), snippets.cend(),
                                     [listed](const CodeSnippet &s) { return s.id == listed->id; });
    if (stored == snippets.cend())
        return;
    snippets.remove(stored - snippets.cbegin());
    m_storage->setCodeSnippets(snippets);
    m_storage->saveSnippets();
}

int CodeSnippets::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant CodeSnippets::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const CodeSnippet &snippet = m_snippets[index.row()];
    switch (role) {
    case TitleRole:
    case Qt::DisplayRole:
        return snippet.title;
    case CodeRole:
        return snippet.code;
    case LanguageRole:
        return snippet.language;
    case IsExpandedRole:
        return snippet.id == m_expandedSnippetID;
    }
    return {};
}

QHash<int, QByteArray> CodeSnippets::roleNames() const
{
    return {
        {TitleRole, "title"}, {CodeRole, "code"}, {LanguageRole, "language"}, {IsExpandedRole, "isExpanded"}};
}

} // namespace quillbay
