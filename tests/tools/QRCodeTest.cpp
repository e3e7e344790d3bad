#include "tools/QRGenerator.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

/// The bytes that another program reads from a picture of a code.
QByteArray bytesIn(const QString &file)
{
    QProcess reader;
    reader.start(QStringLiteral("zbarimg"), {QStringLiteral("--quiet"), QStringLiteral("--raw"),
                                             QStringLiteral("--oneshot"), QStringLiteral("-Sbinary"), file});
    if (!reader.waitForFinished() || reader.exitStatus() != QProcess::NormalExit)
        qFatal("zbarimg cannot be run");
    return reader.readAllStandardOutput();
}

QByteArray bytesIn(const QImage &picture)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("code.png"));
    return picture.save(file) ? bytesIn(file) : QByteArray("not written");
}

QString longUrl()
{
    const QString start = QStringLiteral("https://example.org/?q=");
    return start + QStringLiteral("a1-_").repeated(250).left(1000 - start.size());
}

TEST(QRCodeTest, AnotherProgramReadsTheTextBack)
{
    const QString texts[] = {
        QStringLiteral("Hello, World"),
        QString::fromUtf8("Ça coûte 5 € à Żywiec, naïve Ökonomie"),
        QString::fromUtf8("🦉 writes 📝 by the bay 👩‍👩‍👧"),
        QString::fromUtf8("日本語のテキスト"),
        longUrl(),
        QStringLiteral("0123456789"),
        QStringLiteral("two\nlines"),
    };
    for (const QString &text : texts) {
        SCOPED_TRACE(qPrintable(text));
        const QRCode code(text);
        ASSERT_FALSE(code.isNull());
        EXPECT_EQ(bytesIn(code.image()), text.toUtf8());
    }
}

TEST(QRCodeTest, HasTheHighCorrectionLevelAndTwelvePixelsAModule)
{
    // The first version holds 11 bytes at this level, and 14 at the one below.
    EXPECT_EQ(QRCode(QStringLiteral("12345678901").toLower()).width(), 21);
    const QRCode second(QStringLiteral("abcdefghijkl"));
    EXPECT_EQ(second.width(), 25);
    const QImage picture = second.image();
    EXPECT_EQ(picture.width(), (25 + 8) * 12);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ASSERT_EQ(picture.pixel(x, y), picture.pixel(x / 12 * 12, y / 12 * 12)) << x << ' ' << y;
    }
}

TEST(QRCodeTest, WhatHasNoCode)
{
    EXPECT_TRUE(QRCode(QString()).isNull());
    EXPECT_FALSE(QRCode(QString(1663, QLatin1Char('a'))).isNull());
    EXPECT_TRUE(QRCode(QString(1664, QLatin1Char('a'))).isNull()) << "too long for any version";
    EXPECT_TRUE(QRCode(QString(QChar(0xd800))).isNull()) << "no valid text";
    EXPECT_TRUE(QRCode().image().isNull());
    EXPECT_TRUE(QRCode().preview(140).isNull());
}

TEST(QRCodeTest, ThePreviewIsSharpAtEveryRatioAndCanBeRead)
{
    const QRCode code(QStringLiteral("https://example.org/quillbay"));
    for (const double ratio : {1.0, 1.25, 1.33, 2.0}) {
        SCOPED_TRACE(ratio);
        const int side = qRound(140 * ratio);
        const QImage picture = code.preview(side);
        ASSERT_EQ(picture.size(), QSize(side, side));
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x)
                ASSERT_TRUE(picture.pixel(x, y) == qRgb(0, 0, 0) ||
                            picture.pixel(x, y) == qRgb(255, 255, 255));
        }
        // As it is shown, on white.
        QImage card(side + 80, side + 80, QImage::Format_RGB32);
        card.fill(Qt::white);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x)
                card.setPixel(x + 40, y + 40, picture.pixel(x, y));
        }
        EXPECT_EQ(bytesIn(card), QByteArray("https://example.org/quillbay"));
    }
    EXPECT_EQ(QRCode(longUrl()).preview(140).size(), QSize(140, 140));
}

/// With a temporary folder of its own.
class QRGeneratorTest : public ::testing::Test
{
protected:
    QRGeneratorTest() { qputenv("TMPDIR", folder.path().toLocal8Bit()); }
    ~QRGeneratorTest() override { qunsetenv("TMPDIR"); }

    QTemporaryDir folder;
    QRGenerator generator;
};

TEST_F(QRGeneratorTest, CopyPutsThePictureOnTheClipboard)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    generator.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("before")) << "there is nothing to copy";
    EXPECT_TRUE(generator.copyMessage().isEmpty());
    generator.setText(QStringLiteral("copied"));
    generator.copy();
    EXPECT_EQ(generator.copyMessage(), QStringLiteral("QR Copied!"));
    EXPECT_EQ(bytesIn(QGuiApplication::clipboard()->image()), QByteArray("copied"));
}

TEST_F(QRGeneratorTest, ExportsLeaveOneFileWithTheLastCode)
{
    EXPECT_TRUE(generator.qrFileURL().isEmpty());
    // A link laid there by somebody else is replaced, and where it led is left alone.
    const QString victim = folder.filePath(QStringLiteral("victim"));
    ASSERT_TRUE(QFile::link(victim, folder.filePath(QStringLiteral("quillbay_qrcode.png"))));
    for (const char *text : {"first", "second"}) {
        generator.setText(QString::fromLatin1(text));
        const QUrl url = generator.qrFileURL();
        EXPECT_EQ(url, QUrl::fromLocalFile(folder.filePath(QStringLiteral("quillbay_qrcode.png"))));
        EXPECT_EQ(bytesIn(url.toLocalFile()), QByteArray(text));
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System).size(), 1);
    generator.setText({});
    EXPECT_TRUE(generator.qrFileURL().isEmpty());
}

TEST_F(QRGeneratorTest, AFileThatCannotBeWrittenIsNone)
{
    generator.setText(QStringLiteral("text"));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("quillbay_qrcode.png")));
    EXPECT_TRUE(generator.qrFileURL().isEmpty());
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty())
        << "nothing stays behind";
}

} // namespace
} // namespace quillbay
