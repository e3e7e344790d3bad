#include "ui/FolderColorEditor.h"

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

double number(const QString &text, double otherwise)
{
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? value : otherwise;
}

} // namespace

void FolderColorEditor::setFolderColor(const QString &color)
{
    if (color == m_folderColor)
        return;
    m_folderColor = color;
    const ColorComponents components = folderColorFromHex(color);
    m_place = wheelPlaceOf(components);
    syncTextFields(components);
    Q_EMIT changed();
}

QColor FolderColorEditor::current() const
{
    const ColorComponents color = folderColorFromHex(m_folderColor);
    return QColor::fromRgbF(float(color.red), float(color.green), float(color.blue));
}

void FolderColorEditor::handleHexInput()
{
    if (!m_hexText.startsWith(QLatin1Char('#')))
        m_hexText.prepend(QLatin1Char('#'));
    const ColorComponents color = folderColorFromHex(m_hexText);
    m_place = wheelPlaceOf(color);
    syncComponents(color);
    choose(m_hexText);
}

void FolderColorEditor::handleRGBAInput()
{
    const ColorComponents color{number(m_rText, 0) / 255, number(m_gText, 0) / 255, number(m_bText, 0) / 255,
                                number(m_aText, 1)};
    m_hexText = colorToHex(color);
    m_place = wheelPlaceOf(color);
    choose(m_hexText);
}

void FolderColorEditor::dragTo(qreal x, qreal y)
{
    choosePlace(wheelPlaceAt({x, y}, m_radius));
}

void FolderColorEditor::moveBy(qreal hue, qreal saturation)
{
    const double moved = m_place.hue + hue;
    choosePlace({moved - std::floor(moved), std::clamp(m_place.saturation + saturation, 0.0, 1.0)});
}

void FolderColorEditor::choosePreset(const QString &hex)
{
    setFolderColor(hex);
    Q_EMIT chosen(hex);
}

void FolderColorEditor::choosePlace(const WheelPlace &place)
{
    m_place = place;
    const ColorComponents color = colorAt(place);
    syncTextFields(color);
    choose(m_hexText);
}

void FolderColorEditor::choose(const QString &color)
{
    m_folderColor = color;
    Q_EMIT chosen(color);
    Q_EMIT changed();
}

void FolderColorEditor::syncTextFields(const ColorComponents &color)
{
    m_hexText = colorToHex(color);
    syncComponents(color);
    m_aText = QString::number(color.alpha, 'f', 1);
}

void FolderColorEditor::syncComponents(const ColorComponents &color)
{
    m_rText = QString::number(byteOf(color.red));
    m_gText = QString::number(byteOf(color.green));
    m_bText = QString::number(byteOf(color.blue));
}

} // namespace quillbay
