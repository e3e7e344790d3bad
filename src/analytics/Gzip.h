#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace quillbay {

/// Why data could not be compressed.
struct GzipError
{
    int code = 0;        ///< Of zlib.
    std::string message; ///< For people.
};

/// The data as a gzip file, at zlib's level (-1: the default, 0 to 9). Empty data is an error. Thread: any.
std::variant<std::string, GzipError> gzipCompressed(std::string_view data, int level = -1);

} // namespace quillbay
