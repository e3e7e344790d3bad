#include "platform/linux/icons/IconPicture.h"

#include "platform/icons/Fixtures.h"
#include "platform/linux/icons/IcnsPicture.h"
#include "platform/linux/icons/SafeSvg.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QtEndian>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quillbay::platform {
namespace {

using quillbay::testing::middle;
using quillbay::testing::png;
using quillbay::testing::svg;
using quillbay::testing::svgDocument;
using quillbay::testing::TestHome;

QByteArray icnsEntry(const char *type, const QByteArray &content)
{
    QByteArray length(4, '\0');
    qToBigEndian(quint32(content.size() + 8), length.data());
    return type + length + content;
}

QByteArray icns(const QByteArray &entries)
{
    return icnsEntry("icns", entries);
}

void expectFilled(const QImage &image, int edge, const QColor &color)
{
    ASSERT_EQ(image.size(), QSize(edge, edge));
    EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(image.devicePixelRatio(), 1);
    for (const QPoint &corner :
         {QPoint(0, 0), QPoint(edge - 1, 0), QPoint(0, edge - 1), QPoint(edge - 1, edge - 1)})
        EXPECT_EQ(image.pixelColor(corner), color);
    EXPECT_EQ(middle(image), color);
}

TEST(IconPicture, FillsEveryPixelSizeFromEveryKindOfSource)
{
    const QColor color(Qt::red);
    const QByteArray xpm = "/* XPM */\nstatic char *a[] = {\"2 2 1 1\", \"x c #ff0000\", \"xx\", \"xx\"};\n";
    for (const int edge : {80, 100, 120, 160}) {
        for (const QByteArray &source : {png(edge, color), png(48, color), png(512, color), svg(color), xpm,
                                         icns(icnsEntry("ic07", png(128, color)))})
            expectFilled(decodeIconPicture(source, edge), edge, color);
    }
}

TEST(IconPicture, LeavesAPictureOfTheExactSizeUntouched)
{
    QImage original(80, 80, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 80; ++x)
            original.setPixel(x, y, (x + y) % 2 ? qRgba(255, 255, 255, 255) : qRgba(0, 0, 0, 255));
    }
    original.setDevicePixelRatio(2);
    const TestHome home;
    const QString file = home.path(QStringLiteral("checkers.png"));
    ASSERT_TRUE(original.save(file));
    original.setDevicePixelRatio(1);
    EXPECT_EQ(readIconPicture(file, 80), original);
}

TEST(IconPicture, RendersDrawingsSharplyAtTheWantedSize)
{
    const QByteArray half = svgDocument("<rect width=\"50\" height=\"100\" fill=\"#0000ff\"/>");
    for (const int edge : {80, 100, 160}) {
        const QImage image = decodeIconPicture(half, edge);
        ASSERT_EQ(image.size(), QSize(edge, edge));
        EXPECT_EQ(image.pixelColor(edge / 2 - 1, edge / 2), QColor(Qt::blue)) << edge;
        EXPECT_EQ(image.pixelColor(edge / 2, edge / 2).alpha(), 0) << edge;
    }
}

TEST(IconPicture, KeepsTheAspectAndCentres)
{
    const QByteArray wideSvg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 200 100\">"
                               "<rect width=\"200\" height=\"100\" fill=\"#00ff00\"/></svg>";
    for (const QByteArray &wide : {png({200, 100}, Qt::green), png({40, 20}, Qt::green), wideSvg}) {
        const QImage image = decodeIconPicture(wide, 80);
        ASSERT_EQ(image.size(), QSize(80, 80));
        EXPECT_EQ(image.pixelColor(0, 40), QColor(Qt::green));
        EXPECT_EQ(image.pixelColor(79, 40), QColor(Qt::green));
        EXPECT_EQ(image.pixelColor(40, 19).alpha(), 0);
        EXPECT_EQ(image.pixelColor(40, 20), QColor(Qt::green));
        EXPECT_EQ(image.pixelColor(40, 59), QColor(Qt::green));
        EXPECT_EQ(image.pixelColor(40, 60).alpha(), 0);
    }
}

TEST(IconPicture, RefusesWhatIsBrokenHugeOrInvisible)
{
    QByteArray truncated = png(64, Qt::red);
    truncated.truncate(truncated.size() / 2);
    for (const QByteArray &bad :
         {QByteArray(), QByteArray("hello"), QByteArray(4096, '\0'), truncated.first(20),
          png({5000, 1}, Qt::red), png(64, Qt::transparent), svgDocument({}), svgDocument("<rect"),
          QByteArray("<html/>"), QByteArray("icns"), icns({}), icns(icnsEntry("ic08", "no picture"))})
        EXPECT_TRUE(decodeIconPicture(bad, 80).isNull()) << bad.left(80).toStdString();
}

TEST(IconPicture, OpensRegularFilesOnly)
{
    const TestHome home;
    const auto path = [&home](const char *name) { return home.path(QString::fromLatin1(name)); };
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("fifo.png")).constData(), 0600), 0);
    ASSERT_TRUE(QDir().mkpath(path("folder.png")));
    ASSERT_TRUE(QFile::link(path("loop.png"), path("loop.png")));
    QFile large(path("large.png"));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly));
    large.write(png(80, Qt::red));
    ASSERT_TRUE(large.resize(16 * 1024 * 1024 + 1));
    large.close();
    for (const char *name : {"fifo.png", "folder.png", "loop.png", "large.png", "missing.png"})
        EXPECT_TRUE(readIconPicture(path(name), 80).isNull()) << name;
    EXPECT_TRUE(readIconPicture(QStringLiteral("/dev/zero"), 80).isNull());

    home.write(QStringLiteral("real.png"), png(80, Qt::red));
    ASSERT_TRUE(QFile::link(path("real.png"), path("link.png")));
    expectFilled(readIconPicture(path("link.png"), 80), 80, Qt::red);
}

TEST(IcnsPicture, PicksTheExactThenTheNextLargerThenTheLargest)
{
    const QByteArray data =
        icns(icnsEntry("TOC ", QByteArray(16, '\0')) + icnsEntry("icp4", png(16, Qt::red)) +
             icnsEntry("ic09", png(512, Qt::green)) + icnsEntry("ic08", png(256, Qt::blue)) +
             icnsEntry("ic10", "\0\0\0\x0cjP  ") + icnsEntry("icnV", png(100, Qt::black)) +
             icnsEntry("ic07", png(128, Qt::cyan)));
    const auto color = [&data](int edge) { return middle(QImage::fromData(bestIcnsPicture(data, edge))); };
    EXPECT_EQ(color(16), QColor(Qt::red));
    EXPECT_EQ(color(100), QColor(Qt::cyan));
    EXPECT_EQ(color(256), QColor(Qt::blue));
    EXPECT_EQ(color(257), QColor(Qt::green));
    EXPECT_EQ(color(1024), QColor(Qt::green));
}

TEST(IcnsPicture, SurvivesEveryTruncationAndLyingLengths)
{
    const QByteArray whole =
        icns(icnsEntry("icp4", png(16, Qt::red)) + icnsEntry("ic07", png(128, Qt::blue)));
    const QByteArray first = bestIcnsPicture(whole, 16);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const QByteArray found = bestIcnsPicture(whole.first(length), 16);
        EXPECT_TRUE(found.isEmpty() || found == first) << length;
    }
    for (const quint32 lie : {0U, 7U, 0x7fffffffU, 0xffffffffU}) {
        QByteArray lying = whole;
        qToBigEndian(lie, lying.data() + 12);
        EXPECT_TRUE(bestIcnsPicture(lying, 16).isEmpty()) << lie;
    }
}

TEST(SafeSvg, KeepsWhatADrawingNeeds)
{
    const QByteArray drawing =
        "<?xml version=\"1.0\"?><!DOCTYPE svg [<!ENTITY ns \"http://www.w3.org/2000/svg\">]>"
        "<s:svg xmlns:s=\"&ns;\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" viewBox=\"0 0 100 "
        "100\"><s:defs>"
        "<s:linearGradient id=\"g\"><s:stop offset=\"0\" stop-color=\"#f00\"/></s:linearGradient>"
        "<s:rect id=\"r\" width=\"100\" height=\"100\"/></s:defs><s:style>.f { fill: url(#g) }</s:style>"
        "<s:use xlink:href=\"#r\" class=\"f\"/></s:svg>";
    expectFilled(decodeIconPicture(drawing, 80), 80, Qt::red);
    const QByteArray embedded =
        svgDocument("<image width=\"100\" height=\"100\" xlink:href=\"data:image/png;base64," +
                    png(10, Qt::blue).toBase64() + "\"/>");
    expectFilled(decodeIconPicture(embedded, 80), 80, Qt::blue);
}

TEST(SafeSvg, OpensNoFile)
{
    const TestHome home;
    const QByteArray fifo = QFile::encodeName(home.path(QStringLiteral("fifo")));
    ASSERT_EQ(::mkfifo(fifo.constData(), 0600), 0);
    const QByteArray nested = svgDocument("<image xlink:href=\"" + fifo + "\" width=\"9\" height=\"9\"/>");
    // Each of these would wait for a writer for ever.
    for (const QByteArray &body :
         {QByteArray("<image xlink:href=\"" + fifo + "\" width=\"9\" height=\"9\"/>"),
          QByteArray("<image href=\"file://" + fifo + "\" width=\"9\" height=\"9\"><title>t</title></image>"),
          QByteArray("<image xlink:href=\"data:image/svg+xml;base64," + nested.toBase64() +
                     "\" width=\"9\" height=\"9\"/>")})
        expectFilled(
            decodeIconPicture(svgDocument(body + "<rect width=\"100\" height=\"100\" fill=\"#f00\"/>"), 80),
            80, Qt::red);
    QByteArray styled = svg(Qt::red);
    styled.replace("<svg", "<?xml-stylesheet type=\"text/css\" href=\"" + fifo + "\"?><svg");
    expectFilled(decodeIconPicture(styled, 80), 80, Qt::red);
}

TEST(SafeSvg, RefusesWhatWouldNotEnd)
{
    QByteArray laughs = "<defs><rect id=\"l0\" width=\"1\" height=\"1\"/>";
    for (int i = 1; i < 20; ++i) {
        const QByteArray use = "<use xlink:href=\"#l" + QByteArray::number(i - 1) + "\"/>";
        laughs += "<g id=\"l" + QByteArray::number(i) + "\">" + use.repeated(10) + "</g>";
    }
    laughs += "</defs><use xlink:href=\"#l19\"/>";
    const QByteArray deep = QByteArray("<g>").repeated(5000) + QByteArray("</g>").repeated(5000);
    const QByteArray self =
        "<g id=\"a\"><use xlink:href=\"#b\"/></g><g id=\"b\"><use xlink:href=\"#a\"/></g>";
    const QByteArray entities =
        "<!DOCTYPE svg [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
        "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">"
        "<!ENTITY e \"&d;&d;&d;&d;&d;&d;&d;&d;\">]><svg><text>&e;</text></svg>";
    for (const QByteArray &body : {laughs, deep, self, QByteArray("<g/>").repeated(200'000)})
        EXPECT_TRUE(safeSvg(svgDocument(body)).isEmpty()) << body.left(60).toStdString();
    EXPECT_TRUE(safeSvg(entities).isEmpty());
}

} // namespace
} // namespace quillbay::platform
