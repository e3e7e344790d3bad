#include "ui/vocabulary/Theme.h"

#include "platform/Appearance.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QJSEngine>

#include <utility>

// Written by the build from the classes of the module. Nothing else refers to it, and a linker takes from a
// static library only what is referred to.
void qml_register_types_Quillbay_Vocabulary();

namespace quillbay {

namespace {

Theme *theOne = nullptr;

} // namespace

Theme::Theme(platform::Appearance &appearance, platform::WindowEffects &effects, QObject *parent)
    : QObject(parent)
    , m_appearance(appearance)
    , m_effects(effects)
{
    Q_ASSERT(!theOne);
    theOne = this;
    [[maybe_unused]] volatile auto keep = &qml_register_types_Quillbay_Vocabulary;
    connect(&m_appearance, &platform::Appearance::darkChanged, this, &Theme::darkChanged);
    connect(&m_appearance, &platform::Appearance::reducedMotionChanged, this, &Theme::reducedMotionChanged);
}

Theme::~Theme()
{
    theOne = nullptr;
}

Theme *Theme::instance()
{
    return theOne;
}

Theme *Theme::create(QQmlEngine *, QJSEngine *)
{
    if (!theOne)
        qFatal("A screen was loaded before the theme was made");
    QJSEngine::setObjectOwnership(theOne, QJSEngine::CppOwnership);
    return theOne;
}

bool Theme::isDark() const
{
    return m_appearance.isDark();
}

bool Theme::reducedMotion() const
{
    return m_appearance.reducedMotion();
}

QColor Theme::adaptive(QRgb light, QRgb dark) const
{
    return QColor::fromRgba(isDark() ? dark : light);
}

// Alpha stands first, as in the stored colours of eight digits.
QColor Theme::primary() const
{
    return adaptive(0xd9000000, 0xd9ffffff);
}
QColor Theme::secondary() const
{
    return adaptive(0x80000000, 0x8cffffff);
}
QColor Theme::placeholder() const
{
    return adaptive(0x4d000000, 0x4dffffff);
}
QColor Theme::selection() const
{
    return adaptive(0xffb3d7ff, 0xff3f638b);
}
QColor Theme::windowBackground() const
{
    return adaptive(0xffececec, 0xff1e1e1e);
}
QColor Theme::focus() const
{
    return adaptive(0x990067f4, 0x991aa9ff);
}
QColor Theme::blue() const
{
    return adaptive(0xff007aff, 0xff0a84ff);
}
QColor Theme::red() const
{
    return adaptive(0xffff3b30, 0xffff453a);
}
QColor Theme::green() const
{
    return adaptive(0xff34c759, 0xff30d158);
}
QColor Theme::orange() const
{
    return adaptive(0xffff9500, 0xffff9f0a);
}
QColor Theme::yellow() const
{
    return adaptive(0xffffcc00, 0xffffd60a);
}
QColor Theme::purple() const
{
    return adaptive(0xffaf52de, 0xffbf5af2);
}
QColor Theme::pink() const
{
    return adaptive(0xffff2d55, 0xffff375f);
}
QColor Theme::cyan() const
{
    return adaptive(0xff32ade6, 0xff64d2ff);
}
QColor Theme::gray() const
{
    return adaptive(0xff8e8e93, 0xff98989d);
}

QString Theme::defaultColor() const
{
    return QStringLiteral("#007AFF");
}

QVariantList Theme::presetColors() const
{
    const auto preset = [](const char *hex, const QString &name) {
        return QVariant::fromValue(PresetColor{QLatin1String(hex), name});
    };
    return {preset("#007AFF", tr("Blue")),   preset("#FF3B30", tr("Red")),    preset("#34C759", tr("Green")),
            preset("#FF9500", tr("Orange")), preset("#AF52DE", tr("Purple")), preset("#FF2D55", tr("Pink")),
            preset("#8E8E93", tr("Gray"))};
}

QString Theme::fontFamily() const
{
    return QGuiApplication::font().family();
}

QString Theme::monospacedFamily() const
{
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

QColor Theme::fade(const QColor &color, double opacity)
{
    QColor faded = color;
    faded.setAlphaF(float(color.alphaF() * opacity));
    return faded;
}

QColor Theme::material(const QString &name, bool dark, bool blurred)
{
    const auto pick = [dark](QRgb light, QRgb darkOne) { return QColor::fromRgba(dark ? darkOne : light); };
    if (name == QLatin1String("ultraThin"))
        return blurred ? pick(0x66f6f6f6, 0x66262626) : pick(0xa6f6f6f6, 0xa62a2a2a);
    if (name == QLatin1String("thin"))
        return blurred ? pick(0x99f6f6f6, 0x99262626) : pick(0xccf6f6f6, 0xcc2a2a2a);
    return blurred ? pick(0xb3f0f0f2, 0xb3262628) : pick(0xffe9e9eb, 0xff29292b);
}

QColor Theme::mix(const QColor &first, const QColor &second, double part)
{
    const auto between = [part](float a, float b) { return float(a + (b - a) * part); };
    return QColor::fromRgbF(between(first.redF(), second.redF()), between(first.greenF(), second.greenF()),
                            between(first.blueF(), second.blueF()), between(first.alphaF(), second.alphaF()));
}

} // namespace quillbay
