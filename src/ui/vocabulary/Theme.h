#pragma once

#include <QColor>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace quillbay {

namespace platform {
class Appearance;
class WindowEffects;
} // namespace platform

/// A colour that the user can choose for a folder or workspace.
struct PresetColor
{
    Q_GADGET
    Q_PROPERTY(QString hex MEMBER hex CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)

public:
    QString hex;
    QString name;
};

/// The look that all screens share: colours that follow the desktop's light or dark, sizes, curves of time.
///
/// `main` makes one, before the first engine loads a screen, and keeps it while screens live; making it also
/// links the whole QML module into the program. A length or font size of 1 is one device-independent pixel,
/// so texts take `font.pixelSize`; the family needs no setting, as Text begins with the application's font,
/// which is the desktop's.
///
/// Thread: main thread.
class Theme : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool dark READ isDark NOTIFY darkChanged)
    /// Springs follow by themselves; other animations multiply their duration by `motion`, which is 0 or 1.
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY reducedMotionChanged)
    Q_PROPERTY(int motion READ motion NOTIFY reducedMotionChanged)

    /// Adaptive text colours.
    Q_PROPERTY(QColor primary READ primary NOTIFY darkChanged)
    Q_PROPERTY(QColor secondary READ secondary NOTIFY darkChanged)
    Q_PROPERTY(QColor placeholder READ placeholder NOTIFY darkChanged)
    /// Behind selected text.
    Q_PROPERTY(QColor selection READ selection NOTIFY darkChanged)
    Q_PROPERTY(QColor windowBackground READ windowBackground NOTIFY darkChanged)
    /// Around what has the keyboard.
    Q_PROPERTY(QColor focus READ focus NOTIFY darkChanged)

    Q_PROPERTY(QColor blue READ blue NOTIFY darkChanged)
    Q_PROPERTY(QColor red READ red NOTIFY darkChanged)
    Q_PROPERTY(QColor green READ green NOTIFY darkChanged)
    Q_PROPERTY(QColor orange READ orange NOTIFY darkChanged)
    Q_PROPERTY(QColor yellow READ yellow NOTIFY darkChanged)
    Q_PROPERTY(QColor purple READ purple NOTIFY darkChanged)
    Q_PROPERTY(QColor pink READ pink NOTIFY darkChanged)
    Q_PROPERTY(QColor cyan READ cyan NOTIFY darkChanged)
    Q_PROPERTY(QColor gray READ gray NOTIFY darkChanged)

    Q_PROPERTY(QString defaultColor READ defaultColor CONSTANT)
    /// Of `PresetColor`.
    Q_PROPERTY(QVariantList presetColors READ presetColors CONSTANT)

    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)
    Q_PROPERTY(QString monospacedFamily READ monospacedFamily CONSTANT)
    Q_PROPERTY(int captionSize READ captionSize CONSTANT)
    Q_PROPERTY(int subheadlineSize READ subheadlineSize CONSTANT)
    Q_PROPERTY(int bodySize READ bodySize CONSTANT)

    Q_PROPERTY(int cardRadius READ cardRadius CONSTANT)
    Q_PROPERTY(int plateRadius READ plateRadius CONSTANT)
    Q_PROPERTY(int fieldRadius READ fieldRadius CONSTANT)
    Q_PROPERTY(int hairline READ hairline CONSTANT)

    /// For `easing.bezierCurve` of an animation whose `easing.type` is BezierSpline.
    Q_PROPERTY(QVariantList easeIn READ easeIn CONSTANT)
    Q_PROPERTY(QVariantList easeOut READ easeOut CONSTANT)
    Q_PROPERTY(QVariantList easeInOut READ easeInOut CONSTANT)
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Both must outlive the theme. A program has one theme at a time.
    Theme(platform::Appearance &appearance, platform::WindowEffects &effects, QObject *parent = nullptr);
    ~Theme() override;

    /// The one that `main` made; null outside its life.
    static Theme *instance();
    /// For the engine. A program that shows a screen without having made a theme ends here.
    static Theme *create(QQmlEngine *engine, QJSEngine *scriptEngine);

    bool isDark() const;
    bool reducedMotion() const;
    int motion() const { return reducedMotion() ? 0 : 1; }
    platform::WindowEffects &effects() const { return m_effects; }

    QColor primary() const;
    QColor secondary() const;
    QColor placeholder() const;
    QColor selection() const;
    QColor windowBackground() const;
    QColor focus() const;
    QColor blue() const;
    QColor red() const;
    QColor green() const;
    QColor orange() const;
    QColor yellow() const;
    QColor purple() const;
    QColor pink() const;
    QColor cyan() const;
    QColor gray() const;

    QString defaultColor() const;
    QVariantList presetColors() const;

    QString fontFamily() const;
    QString monospacedFamily() const;
    int captionSize() const { return 10; }
    int subheadlineSize() const { return 11; }
    int bodySize() const { return 13; }
    int cardRadius() const { return 32; }
    int plateRadius() const { return 20; }
    int fieldRadius() const { return 12; }
    int hairline() const { return 1; }
    QVariantList easeIn() const { return {0.42, 0, 1, 1, 1, 1}; }
    QVariantList easeOut() const { return {0, 0, 0.58, 1, 1, 1}; }
    QVariantList easeInOut() const { return {0.42, 0, 0.58, 1, 1, 1}; }

    /// `color` at that opacity of its own: the alpha is multiplied, so that black at 0.85 faded by half is at
    /// 0.425.
    Q_INVOKABLE static QColor fade(const QColor &color, double opacity);
    /// The fill of a backing: "sidebar", "thin" or "ultraThin". `blurred`: over what the compositor blurs, so
    /// that it must let that through; otherwise the flat colour that reads the same. Thin ones stay
    /// translucent.
    Q_INVOKABLE static QColor material(const QString &name, bool dark, bool blurred);
    /// Between two colours: 0 gives the first, 1 the second.
    Q_INVOKABLE static QColor mix(const QColor &first, const QColor &second, double part);

Q_SIGNALS:
    void darkChanged();
    void reducedMotionChanged();

private:
    /// The colour of the appearance that is on.
    QColor adaptive(QRgb light, QRgb dark) const;

    platform::Appearance &m_appearance;
    platform::WindowEffects &m_effects;
};

} // namespace quillbay
