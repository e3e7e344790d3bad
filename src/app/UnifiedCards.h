#pragma once

#include "app/CardListModel.h"

namespace quillbay {

class QuillbayViewModel;

/// The cards of the unified grid: first the one that makes a folder, then each of the view model's
/// `unifiedGridItems` that has something to show. A category of which nothing is listed takes no cell, nor
/// does a folder that is gone.
///
/// They follow only while `isShown`; in between they stay as they were. Thread: main thread.
class UnifiedCards : public quillbay::CardListModel // in full, for the type's description
{
    Q_OBJECT
    /// Whether the unified grid is what the selection, the order and the query ask for. It falls at once, and
    /// rises from the event loop with the cards brought up to date.
    Q_PROPERTY(bool isShown READ isShown NOTIFY isShownChanged)

public:
    /// Both must outlive this object.
    UnifiedCards(QuillbayViewModel &viewModel, FolderContents &contents, QObject *parent = nullptr);

    bool isShown() const { return m_isShown; }

Q_SIGNALS:
    void isShownChanged();

protected:
    void update() override;

private:
    bool isAskedFor() const;
    void leaveIfUnasked();
    QList<Card> cards() const;

    QuillbayViewModel &m_viewModel;
    bool m_isShown = false;
};

} // namespace quillbay
