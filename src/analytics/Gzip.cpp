#include "analytics/Gzip.h"

#include "analytics/MarlpostLogger.h"

#include <cstdio>
#include <limits>

#include <zlib.h>

namespace quillbay {

namespace {

constexpr int GzipWindowBits = 15 + 16;
constexpr int MemoryLevel = 9;
constexpr std::size_t Chunk = std::size_t(16) * 1024;

GzipError errorOf(int code, const z_stream &stream)
{
    return {code, stream.msg ? stream.msg : zError(code)};
}

void logSizes(std::size_t original, std::size_t compressed)
{
    const double ratio = double(compressed) / double(original);
    char text[96];
    std::snprintf(text, sizeof text, "%.3f, compression percentage = %.1f%%", ratio, (1 - ratio) * 100);
    MarlpostLogger::info("Payload gzipped: original size = ", original,
                         " bytes, compressed size = ", compressed,
                         " bytes, compression ratio = ", std::string_view(text));
}

} // namespace

std::variant<std::string, GzipError> gzipCompressed(std::string_view data, int level)
{
    if (data.empty())
        return GzipError{Z_STREAM_ERROR, "Empty Data object cannot be compressed."};
    if (data.size() > std::numeric_limits<uInt>::max())
        return GzipError{Z_MEM_ERROR, "The data is too large."};
    z_stream stream = {};
    int code = deflateInit2(&stream, level, Z_DEFLATED, GzipWindowBits, MemoryLevel, Z_DEFAULT_STRATEGY);
    if (code != Z_OK)
        return errorOf(code, stream);
    // zlib has no const in its interface, and does not write there.
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.data()));
    stream.avail_in = uInt(data.size());
    std::string compressed;
    do {
        const std::size_t done = compressed.size();
        compressed.resize(done + Chunk);
        stream.next_out = reinterpret_cast<Bytef *>(compressed.data() + done);
        stream.avail_out = uInt(Chunk);
        code = deflate(&stream, Z_FINISH);
    } while (code == Z_OK || (code == Z_BUF_ERROR && stream.avail_out == 0));
    compressed.resize(compressed.size() - stream.avail_out);
    const GzipError error = errorOf(code, stream);
    const int ended = deflateEnd(&stream);
    if (code != Z_STREAM_END || ended != Z_OK)
        return error;
    logSizes(data.size(), compressed.size());
    return compressed;
}

} // namespace quillbay
