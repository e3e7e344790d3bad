#pragma once

#include "ui/FolderColor.h"

#include <QColor>
#include <QObject>
#include <QtQmlIntegration>

namespace quillbay {

/// The colour of a folder as the colour popover edits it: a place on the wheel and the texts of its fields,
/// kept in step. Every operation that chooses a colour sends `chosen` with the text to store.
///
/// Thread: main thread.
class FolderColorEditor : public QObject
{
    Q_OBJECT
    /// As it is stored. Writing it brings the wheel and the fields to it and sends no `chosen`.
    Q_PROPERTY(QString folderColor READ folderColor WRITE setFolderColor NOTIFY changed)
    /// What `folderColor` stands for here.
    Q_PROPERTY(QColor current READ current NOTIFY changed)
    Q_PROPERTY(qreal hue READ hue NOTIFY changed)
    Q_PROPERTY(qreal saturation READ saturation NOTIFY changed)
    Q_PROPERTY(QString hexText MEMBER m_hexText NOTIFY changed)
    Q_PROPERTY(QString rText MEMBER m_rText NOTIFY changed)
    Q_PROPERTY(QString gText MEMBER m_gText NOTIFY changed)
    Q_PROPERTY(QString bText MEMBER m_bText NOTIFY changed)
    Q_PROPERTY(QString aText MEMBER m_aText NOTIFY changed)
    /// Of the wheel, in the units that `dragTo` counts in.
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed)
    /// From the centre of the wheel.
    Q_PROPERTY(QPointF markerOffset READ markerOffset NOTIFY changed)
    QML_ELEMENT

public:
    using QObject::QObject;

    QString folderColor() const { return m_folderColor; }
    void setFolderColor(const QString &color);
    QColor current() const;
    qreal hue() const { return m_place.hue; }
    qreal saturation() const { return m_place.saturation; }
    QPointF markerOffset() const { return offsetOf(m_place, m_radius); }

    /// Takes `hexText` as it stands, with a "#" in front; what is no colour shows as grey, and is stored.
    Q_INVOKABLE void handleHexInput();
    /// Takes the four fields; what is no number counts as 0, an alpha as 1. Nothing is limited to 255.
    Q_INVOKABLE void handleRGBAInput();
    /// The place at an offset from the centre of the wheel.
    Q_INVOKABLE void dragTo(qreal x, qreal y);
    /// Round the wheel, and outward, from where the marker is.
    Q_INVOKABLE void moveBy(qreal hue, qreal saturation);
    Q_INVOKABLE void choosePreset(const QString &hex);

Q_SIGNALS:
    void chosen(const QString &color);
    void changed();

private:
    void choosePlace(const WheelPlace &place);
    void choose(const QString &color);
    void syncTextFields(const ColorComponents &color);
    void syncComponents(const ColorComponents &color);

    QString m_folderColor;
    WheelPlace m_place{0, 1};
    QString m_hexText;
    QString m_rText;
    QString m_gText;
    QString m_bText;
    QString m_aText = QStringLiteral("1.0");
    qreal m_radius = 70;
};

} // namespace quillbay
