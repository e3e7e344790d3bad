#pragma once

#include <QImage>
#include <QString>

namespace quillbay {

/// The code of a text: its UTF-8 bytes at correction level Q, in the smallest version that holds them. A
/// value; null for an empty text, one that is no valid Unicode, and one too long for any version.
class QRCode
{
public:
    QRCode() = default;
    explicit QRCode(const QString &text);

    bool isNull() const { return m_modules.isNull(); }
    /// Modules in either direction.
    int width() const { return m_modules.width(); }

    /// For a file or the clipboard: each module 12 pixels square, within the blank margin of 4 modules that
    /// readers need. Black on white, one bit a pixel: as a file it is made in a few milliseconds, with
    /// colours it would take a fifth of a second.
    QImage image() const;

    /// A picture of `side` pixels in either direction with every edge sharp: modules of a whole number of
    /// pixels, in the middle of white; modules that would be smaller than 2 pixels fill the picture as they
    /// can.
    QImage preview(int side) const;

private:
    QImage m_modules; ///< One pixel each.
};

} // namespace quillbay
