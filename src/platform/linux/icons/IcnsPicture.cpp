#include "platform/linux/icons/IcnsPicture.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <string_view>

namespace quillbay::platform {

namespace {

using namespace std::string_view_literals;

constexpr qsizetype headerSize = 8;
constexpr auto pictureTypes = std::array{"icp4"sv, "icp5"sv, "icp6"sv, "ic07"sv, "ic08"sv, "ic09"sv,
                                         "ic10"sv, "ic11"sv, "ic12"sv, "ic13"sv, "ic14"sv};
constexpr auto pngSignature = "\x89PNG\r\n\x1a\n"sv;
/// Signature, length and type of the first chunk, then the width.
constexpr qsizetype pngWidthOffset = 16;

std::string_view view(const QByteArray &data, qsizetype offset)
{
    return {data.constData() + offset, size_t(data.size() - offset)};
}

quint32 number(const QByteArray &data, qsizetype offset)
{
    return qFromBigEndian<quint32>(data.constData() + offset);
}

/// Of two widths, the one that serves `edge` better.
bool isBetter(quint32 width, quint32 than, quint32 edge)
{
    if (width >= edge && than >= edge)
        return width < than;
    return width > than;
}

} // namespace

bool isIcns(const QByteArray &data)
{
    return data.size() > headerSize && data.startsWith("icns");
}

QByteArray bestIcnsPicture(const QByteArray &data, int edge)
{
    if (!isIcns(data))
        return {};
    QByteArray best;
    quint32 bestWidth = 0;
    qsizetype offset = headerSize;
    while (offset + headerSize <= data.size()) {
        const qsizetype length = number(data, offset + 4);
        if (length < headerSize || length > data.size() - offset)
            break;
        const std::string_view type = view(data, offset).substr(0, 4);
        const qsizetype content = offset + headerSize;
        const bool isPicture =
            std::find(pictureTypes.begin(), pictureTypes.end(), type) != pictureTypes.end() &&
            length >= headerSize + pngWidthOffset + 4 && view(data, content).starts_with(pngSignature);
        if (isPicture) {
            const quint32 width = number(data, content + pngWidthOffset);
            if (best.isEmpty() || isBetter(width, bestWidth, quint32(edge))) {
                best = data.sliced(content, length - headerSize);
                bestWidth = width;
            }
        }
        offset += length;
    }
    return best;
}

} // namespace quillbay::platform
