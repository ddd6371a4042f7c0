#include "plaincopy.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/types.h>
#include <unistd.h>

enum { PieceSize = 1 << 20 };

static char piece[PieceSize];

int PlainRead(const char* path)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return -1;
    ssize_t count = 0;
    do {
        count = read(file, piece, PieceSize);
    } while (count > 0);
    close(file);
    return count < 0 ? -1 : 0;
}

static int WritePieces(int file, size_t size)
{
    while (size > 0) {
        const ssize_t count = write(file, piece, size < PieceSize ? size : PieceSize);
        if (count <= 0)
            return -1;
        size -= (size_t)count;
    }
    return 0;
}

int PlainWrite(const struct PlainOutput* output)
{
    const int file = open(output->temporaryName, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0)
        return -1;
    const int written = WritePieces(file, output->size);
    if (close(file) != 0 || written != 0)
        return -1;
    return rename(output->temporaryName, output->finalName);
}
