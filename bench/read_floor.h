#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What the kernel charges for reading `count` files below `folder`: opens, reads to the end and closes each, one after
   the other into one buffer, and looks at nothing. The names are given, so that listing the folder is not part of it.
   Returns the number of bytes, or -1 if a file cannot be read. Files of more than a mebibyte are read in parts. */
long read_floor(const char *folder, const char *const *names, size_t count);

#ifdef __cplusplus
}
#endif
