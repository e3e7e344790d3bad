// What libFuzzer calls with each input. Compiled once for each decoder: CHECK is the function that checks it.

#include "fuzz/Checks.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    if (const char *fault = quillbay::testing::CHECK(input)) {
        std::fprintf(stderr, "%s\n", fault);
        std::abort();
    }
    return 0;
}
