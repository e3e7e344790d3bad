#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* What the kernel charges at least for a scan of `folder`: lists it and opens, reads to the end and closes
   the file NAME`inside` of each child NAME, one after the other into one buffer, and looks at nothing. Hidden
   children are left out. Returns the number of bytes, or -1 if something cannot be read. */
long read_floor(const char *folder, const char *inside);

#ifdef __cplusplus
}
#endif
