#pragma once

#include "app/CardListModel.h"

namespace quillbay {

class AppFinder;

/// The cards of the hidden folders, in the order of all folders. Thread: main thread.
class HiddenCards : public quillbay::CardListModel // in full, for the type's description
{
    Q_OBJECT

public:
    /// Both must outlive this object.
    HiddenCards(const AppFinder &finder, FolderContents &contents, QObject *parent = nullptr);

protected:
    void update() override;

private:
    const AppFinder &m_finder;
};

} // namespace quillbay
