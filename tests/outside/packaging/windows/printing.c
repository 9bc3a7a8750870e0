// A compiler for tests: makes the file behind -o, prints the file in %PRINTED% and ends with %PRINTED_STATUS%. Each run
// leaves a line in "runs" in its own folder.
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

static void write_to(const char* name, const char* mode, const char* text) {
    FILE* file = fopen(name, mode);
    if (!file)
        exit(99);
    fputs(text, file);
    fclose(file);
}

int main(int count, char** words) {
    char runs[MAX_PATH] = "";
    GetModuleFileNameA(NULL, runs, MAX_PATH);
    strcpy(strrchr(runs, '\\'), "\\runs");
    write_to(runs, "a", "run\n");

    const char* status = getenv("PRINTED_STATUS");
    for (int i = 1; i + 1 < count; ++i)
        if (strcmp(words[i], "-o") == 0 && !status)
            write_to(words[i + 1], "w", "made");

    char part[4096];
    FILE* printed = getenv("PRINTED") ? fopen(getenv("PRINTED"), "rb") : NULL;
    _setmode(_fileno(stdout), _O_BINARY);
    for (size_t got; printed && (got = fread(part, 1, sizeof part, printed)) > 0;)
        fwrite(part, 1, got, stdout);
    return status ? atoi(status) : 0;
}
