/* Runs the LZX codec of wimlib, the strongest free one, on one file: reference-codec FILE LEVEL
   Prints the compressed bytes and the user + system seconds. Its window is a chunk of 2 MiB that does not
   slide, and its data are no cabinet: it is the measure for time, and near one for size. */
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
#include <wimlib.h>

enum { kChunk = 2 * 1024 * 1024 };

static double cpu_seconds(void) {
    struct timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return (double)now.tv_sec + (double)now.tv_nsec * 1e-9;
}

static size_t compress_all(const char *bytes, size_t size, unsigned level, char *out) {
    struct wimlib_compressor *codec;
    size_t total = 0;
    if (wimlib_create_compressor(WIMLIB_COMPRESSION_TYPE_LZX, kChunk, level, &codec) != 0) exit(1);
    for (size_t at = 0; at < size; at += kChunk) {
        const size_t length = size - at < kChunk ? size - at : kChunk;
        const size_t packed = wimlib_compress(bytes + at, length, out, length - 1, codec);
        total += packed == 0 ? length : packed; /* 0: did not get smaller */
    }
    wimlib_free_compressor(codec);
    return total;
}

int main(int argc, char **argv) {
    if (argc != 3) return 2;
    FILE *file = fopen(argv[1], "rb");
    if (file == NULL) return 1;
    fseek(file, 0, SEEK_END);
    const size_t size = (size_t)ftell(file);
    rewind(file);
    char *bytes = malloc(size + 1), *out = malloc(kChunk);
    if (bytes == NULL || out == NULL || fread(bytes, 1, size, file) != size) return 1;
    const unsigned level = (unsigned)atoi(argv[2]);
    const double start = cpu_seconds();
    const size_t packed = compress_all(bytes, size, level, out);
    printf("%zu %.2f\n", packed, cpu_seconds() - start);
    return 0;
}
