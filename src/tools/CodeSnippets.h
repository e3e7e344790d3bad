#pragma once

#include "workspaces/WorkspaceStorage.h"

#include <QAbstractListModel>
#include <QPointer>

namespace quillbay {

/// The snippets of the active workspace whose title contains the search text, in stored order, with the form
/// for a new one. Each change is stored at once.
///
/// Thread: main thread.
class CodeSnippets : public QAbstractListModel
{
    Q_OBJECT
    /// Set once; must outlive this object.
    Q_PROPERTY(
        quillbay::WorkspaceStorage *storage READ storage WRITE setStorage NOTIFY storageChanged REQUIRED)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString snippetSearch READ snippetSearch WRITE setSnippetSearch NOTIFY snippetSearchChanged)
    Q_PROPERTY(bool showCreateForm MEMBER m_showCreateForm NOTIFY formChanged)
    Q_PROPERTY(QString newTitle MEMBER m_newTitle NOTIFY formChanged)
    Q_PROPERTY(QString newLanguage MEMBER m_newLanguage NOTIFY formChanged)
    Q_PROPERTY(QString newCode MEMBER m_newCode NOTIFY formChanged)
    /// Empty where there is nothing to say.
    Q_PROPERTY(QString copyMessage READ copyMessage NOTIFY copyMessageChanged)

public:
    enum Role { TitleRole = Qt::UserRole + 1, CodeRole, LanguageRole, IsExpandedRole };

    using QAbstractListModel::QAbstractListModel;

    WorkspaceStorage *storage() const { return m_storage; }
    void setStorage(WorkspaceStorage *storage);
    int count() const { return int(m_snippets.size()); }
    QString snippetSearch() const { return m_snippetSearch; }
    void setSnippetSearch(const QString &text);
    QString copyMessage() const { return m_copyMessage; }

    /// Makes a snippet of the form, empties and closes it. Without a title or code nothing happens.
    Q_INVOKABLE void saveForm();
    /// Opens a row and closes the one that was open, or closes it.
    Q_INVOKABLE void toggleExpanded(int row);
    /// Puts the code on the clipboard and says so for `messageTime`, counted from each copy by itself: a
    /// later one does not extend an earlier one's time.
    Q_INVOKABLE void copy(int row);
    Q_INVOKABLE void remove(int row);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    static constexpr int messageTime = 1500; ///< Milliseconds.

Q_SIGNALS:
    void storageChanged();
    void countChanged();
    void snippetSearchChanged();
    void formChanged();
    void copyMessageChanged();

private:
    QList<CodeSnippet> filteredSnippets() const;
    /// The listed snippet; null for a row that is none.
    const CodeSnippet *at(int row) const;
    void update();
    void setCopyMessage(const QString &message);

    QPointer<WorkspaceStorage> m_storage;
    QList<CodeSnippet> m_snippets; ///< Those that are listed.
    QString m_snippetSearch;
    QUuid m_expandedSnippetID; ///< Null, or one that need not be there.
    bool m_showCreateForm = false;
    QString m_newTitle;
    QString m_newLanguage = QStringLiteral("Swift");
    QString m_newCode;
    QString m_copyMessage;
};

} // namespace quillbay
