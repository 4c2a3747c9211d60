// Does wrong with memory, as it is told.

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int main(int argc, char** argv) {
    const char* fault = argc > 1 ? argv[1] : "";
    char* volatile block = malloc(16);
    if (block == NULL) {
        return 1;
    }
    memset(block, 'x', 16);
    const size_t read = strcmp(fault, "overrun") == 0 ? 17 : 16;
    size_t sum = 0;
    for (size_t i = 0; i < read; ++i) {
        sum += (unsigned char)((volatile char*)block)[i];
    }
    if (strcmp(fault, "leak") != 0) {
        free(block);
    }
    block = NULL;
    // Only so that the bytes are used.
    return printf("%zu\n", sum) < 0;
}
