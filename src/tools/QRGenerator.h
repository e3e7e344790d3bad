#pragma once

#include "tools/QRCode.h"

#include <QObject>
#include <QUrl>
#include <QVariant>

namespace quillbay {

/// The text of the popover and its code. Nothing of it is kept.
///
/// Thread: main thread.
class QRGenerator : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// Whether there is a code for the text.
    Q_PROPERTY(bool hasCode READ hasCode NOTIFY textChanged)
    /// Device pixels in either direction of `preview`.
    Q_PROPERTY(int previewSide READ previewSide WRITE setPreviewSide NOTIFY previewChanged)
    /// A QImage, typed as what QML knows.
    Q_PROPERTY(QVariant preview READ preview NOTIFY previewChanged)
    /// Empty where there is nothing to say.
    Q_PROPERTY(QString copyMessage READ copyMessage NOTIFY copyMessageChanged)

public:
    using QObject::QObject;

    QString text() const { return m_text; }
    void setText(const QString &text);
    bool hasCode() const { return !m_code.isNull(); }
    int previewSide() const { return m_previewSide; }
    void setPreviewSide(int side);
    QVariant preview() const { return m_preview; }
    QString copyMessage() const { return m_copyMessage; }

    /// Puts the picture on the clipboard.
    Q_INVOKABLE void copy();
    /// Writes the picture to "quillbay_qrcode.png" in the desktop's temporary folder, in place of what stands
    /// there, and returns where it is; empty where there is no code or the file cannot be written. The file
    /// stays.
    Q_INVOKABLE QUrl qrFileURL() const;

    static constexpr int messageTime = 1500; ///< Milliseconds from each copy; a later one extends nothing.

Q_SIGNALS:
    void textChanged();
    void previewChanged();
    void copyMessageChanged();

private:
    void updatePreview();
    void setCopyMessage(const QString &message);

    QString m_text;
    QRCode m_code;
    int m_previewSide = 0;
    QImage m_preview;
    QString m_copyMessage;
};

} // namespace quillbay
