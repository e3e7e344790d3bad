#pragma once

#include <QColor>
#include <QObject>
#include <QStringView>
#include <QtQml/qqmlregistration.h>

namespace quillbay {

/// The colour that a stored text stands for, in sRGB.
///
/// Everything that is not a letter, mark or digit falls away at both ends ("#FF0000" and "FF0000" are one),
/// then the number of characters decides: 3 are RGB, 6 are RRGGBB, 8 are AARRGGBB (alpha first). Digits are
/// read up to the first character that is none; without any, the number is 0. Another number of characters
/// gives a nearly transparent colour, alpha 1 of 255, so that a damaged text makes the tint vanish instead of
/// painting black.
QColor colorFromHex(QStringView text);
/// The number of characters that decides the form.
int colorDigitCount(QStringView text);

/// `colorFromHex` for QML.
class ColorHex : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE QColor color(const QString &hex) const { return colorFromHex(hex); }
};

} // namespace quillbay
