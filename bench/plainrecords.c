#include "plainrecords.h"

#include <inttypes.h>
#include <stdio.h>

int WritePlainRecords(const char* path, const struct PlainRecords* records)
{
    FILE* file = fopen(path, "w");
    if (file == NULL)
        return -1;
    for (size_t record = 0; record < records->count; ++record) {
        fprintf(file, "%zu", record + 1);
        fprintf(file, ",%" PRIu64, records->times[record]);
        for (size_t i = 0; i < records->analogCount; ++i)
            fprintf(file, ",%d", records->codes[i][record]);
        for (size_t i = 0; i < records->discreteCount; ++i)
            fprintf(file, ",%d", records->states[i][record]);
        fprintf(file, "\n");
    }
    const int failed = ferror(file);
    return fclose(file) != 0 || failed ? -1 : 0;
}
