#pragma once

#include "uninstaller/UninstallerFlow.h"

#include <QObject>

namespace quillbay {

class QuillbayViewModel;
class Uninstaller;

/// Begins what the uninstaller's sheet shows. Thread: main thread.
class Uninstalling : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this object and the flows.
    Uninstalling(QuillbayViewModel &viewModel, Uninstaller &uninstaller, QObject *parent = nullptr);

    /// For the application that is to be uninstalled now; null where none is. The flow goes with `sheet`.
    Q_INVOKABLE quillbay::UninstallerFlow *begin(QObject *sheet);

private:
    QuillbayViewModel &m_viewModel;
    Uninstaller &m_uninstaller;
};

} // namespace quillbay
