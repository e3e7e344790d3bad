#pragma once

#include <QSize>

#include <memory>

class QQuickWindow;

namespace quillbay {

class QuillbayViewModel;

namespace platform {
class ResidualRoots;
}
namespace testing {
class TestLibrary;
}

/// All screens of the program over a library of the tests and the fakes that it has. Ends the program where
/// they cannot be loaded. The library must outlive it. Thread: main thread; one at a time.
class ProgramScreens
{
public:
    /// `roots` may be null where nothing is uninstalled.
    explicit ProgramScreens(testing::TestLibrary &library,
                            std::shared_ptr<const platform::ResidualRoots> roots = nullptr);
    ~ProgramScreens();

    QuillbayViewModel &viewModel();
    /// The window, shown in that size and active.
    QQuickWindow &show(QSize size);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quillbay
