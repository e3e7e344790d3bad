#pragma once

#include "app/CardListModel.h"

namespace quillbay {

class QuillbayViewModel;

/// The cards of the hidden folders, in the order of all folders; none while the hidden list is locked.
/// Thread: main thread.
class HiddenCards : public quillbay::CardListModel // in full, for the type's description
{
    Q_OBJECT

public:
    /// Both must outlive this object.
    HiddenCards(const QuillbayViewModel &viewModel, FolderContents &contents, QObject *parent = nullptr);

protected:
    void update() override;

private:
    const QuillbayViewModel &m_viewModel;
};

} // namespace quillbay
