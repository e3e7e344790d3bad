#include "tools/QRGenerator.h"

#include "tools/Clipboard.h"

#include <QDir>
#include <QFile>
#include <QTemporaryFile>
#include <QTimer>

#include <cstdio>

namespace quillbay {

void QRGenerator::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    m_code = QRCode(text);
    Q_EMIT textChanged();
    updatePreview();
}

void QRGenerator::setPreviewSide(int side)
{
    if (side == m_previewSide)
        return;
    m_previewSide = side;
    updatePreview();
}

void QRGenerator::updatePreview()
{
    m_preview = m_code.preview(m_previewSide);
    Q_EMIT previewChanged();
}

void QRGenerator::copy()
{
    if (!hasCode())
        return;
    copyToClipboard(m_code.image());
    setCopyMessage(tr("QR Copied!"));
    QTimer::singleShot(messageTime, this, [this] { setCopyMessage({}); });
}

QUrl QRGenerator::qrFileURL() const
{
    if (!hasCode())
        return {};
    const QString path = QDir::temp().filePath(QStringLiteral("quillbay_qrcode.png"));
    // Moved there when it is whole: nobody reads half a picture, and a link that somebody laid there is
    // replaced, not followed.
    QTemporaryFile file(path + QStringLiteral(".XXXXXX"));
    if (!file.open() || !m_code.image().save(&file, "PNG") || !file.flush())
        return {};
    if (std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData()) != 0)
        return {};
    file.setAutoRemove(false);
    return QUrl::fromLocalFile(path);
}

void QRGenerator::setCopyMessage(const QString &message)
{
    if (message == m_copyMessage)
        return;
    m_copyMessage = message;
    Q_EMIT copyMessageChanged();
}

} // namespace quillbay
