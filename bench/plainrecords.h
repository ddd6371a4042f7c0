/* ASCII records as one writes them first: fprintf, one value per call. */
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Records in output order; every channel has a value for each of them. */
struct PlainRecords
{
    size_t count;
    const uint64_t* times; /* microseconds, one per record */
    size_t analogCount;
    const int16_t* const* codes; /* of each analog channel */
    size_t discreteCount;
    const unsigned char* const* states; /* 0 or 1, of each discrete channel */
};

/* Writes the records to the file path. 0, or -1 if it cannot be written. */
int WritePlainRecords(const char* path, const struct PlainRecords* records);

#ifdef __cplusplus
}
#endif
