/* The least that converting a recording can cost: its input read once, its output written once. Plain C over
   POSIX calls, in pieces of 1 MB. */
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* An output file: written under its temporary name, then renamed to the final one. */
struct PlainOutput
{
    const char* temporaryName;
    const char* finalName;
    size_t size; /* bytes */
};

/* Reads a file from end to end. 0, or -1 for a failed call (errno says which). */
int PlainRead(const char* path);

/* Writes an output file of size bytes and renames it. 0, or -1 for a failed call. */
int PlainWrite(const struct PlainOutput* output);

#ifdef __cplusplus
}
#endif
