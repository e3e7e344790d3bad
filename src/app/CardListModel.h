#pragma once

#include "app/AppListModel.h"
#include "library/AppFolder.h"
#include "library/GridItemIdentifier.h"

#include <QPointer>

namespace quillbay {

class FolderContents;

/// One cell of the card grid: the card that makes a folder, a folder's or a category's.
struct Card
{
    QString
        identifier;   ///< `GridItemIdentifier::stringRepresentation`; empty for the card that makes a folder.
    QString folderId; ///< Upper-case identifier; empty for every other card.
    QString name;     ///< The folder's or the category's.
    QPointer<AppListModel> group; ///< A category's applications.

    static Card ofFolder(const AppFolder &folder);
    static Card ofCategory(const QString &name, AppListModel *group);
};
inline const QString &listIdentity(const Card &card)
{
    return card.identifier;
}
inline bool looksSame(const Card &a, const Card &b)
{
    return a.identifier == b.identifier && a.name == b.name && a.group == b.group;
}

/// Cards as a model for QML. They follow what they are made of from the event loop, so that an operation of
/// many steps brings one change. Thread: main thread.
class CardListModel : public SteppedListModel<Card>
{
    Q_OBJECT
    /// Said again, since the type's description ends at a base that is a template.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        KindRole = Qt::UserRole + 1, ///< "add", "folder" or "category".
        IdentifierRole,
        FolderIdRole,
        NameRole,
        AppsRole, ///< AppListModel; null for the card that makes a folder.
    };

    /// `contents` must outlive this object.
    explicit CardListModel(FolderContents &contents, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

protected:
    /// Has `update` called from the event loop, once for however many calls.
    void scheduleUpdate();
    virtual void update() = 0;

private:
    FolderContents &m_contents;
    bool m_isScheduled = false;
};

} // namespace quillbay
