#pragma once

#include <QString>
#include <QTemporaryDir>

namespace quillbay::testing {

/// A home folder of a test's own: HOME, the XDG folders and the runtime folder point into it while it lives,
/// and back to where they pointed before afterwards. `test_main` makes one for the whole program, so that no
/// test can touch the real home even by mistake.
class TestHome
{
public:
    TestHome();
    ~TestHome();
    TestHome(const TestHome &) = delete;
    TestHome &operator=(const TestHome &) = delete;

    /// Absolute path of `relative` below the home.
    QString path(const QString &relative = {}) const;
    /// Writes a file below the home, making its folders; returns its absolute path.
    QString write(const QString &relative, const QByteArray &content) const;

private:
    QTemporaryDir m_folder;
    struct Saved;
    Saved *m_saved;
};

} // namespace quillbay::testing
