#include "support/FakeDesktop.h"
#include "support/TestHome.h"
#include "ui/vocabulary/Theme.h"

#include <QtQuickTest>

namespace {

class Setup : public QObject
{
    Q_OBJECT

private:
    quillbay::testing::FakeAppearance m_appearance;
    quillbay::testing::FakeWindowEffects m_effects;
    quillbay::Theme m_theme{m_appearance, m_effects};
};

} // namespace

int main(int argc, char **argv)
{
    const quillbay::testing::TestHome home;
    QTEST_SET_MAIN_SOURCE_PATH
    Setup setup;
    return quick_test_main_with_setup(argc, argv, "vocabulary", QUICK_TEST_SOURCE_DIR, &setup);
}

#include "quick_test_main.moc"
