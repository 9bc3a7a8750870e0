// A gcc.exe for tests under Wine: hands its command line to the machine's own MinGW compiler, i686 or x86-64 like
// itself. Made by "i686-w64-mingw32-gcc -O2 -static -o gcc.exe gcc.c" (script/wine-gcc FOLDER does it); put its folder
// on PATH of the Windows program that looks for a compiler. With -DPROGRAM='"gcov"' it is a gcov.exe. Runs under Wine
// alone, which starts Unix programs; says so elsewhere.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

#ifndef PROGRAM
#define PROGRAM "gcc"
#endif
#ifdef _WIN64
#define COMPILER "x86_64-w64-mingw32-" PROGRAM
#else
#define COMPILER "i686-w64-mingw32-" PROGRAM
#endif

typedef NTSTATUS(WINAPI* SpawnUnix)(char* const arguments[], int wait);
typedef char*(CDECL* UnixFileName)(LPCWSTR name);

static int Fail(const char* what) {
    fprintf(stderr, "gcc.exe: %s\n", what);
    return 1;
}

static char* Utf8(const wchar_t* text) {
    int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, NULL, 0, NULL, NULL);
    char* bytes = malloc((size_t)size);
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, size, NULL, NULL);
    return bytes;
}

static char* Joined(const char* first, const char* second) {
    char* text = malloc(strlen(first) + strlen(second) + 1);
    strcpy(text, first);
    return strcat(text, second);
}

// How many characters of an argument stand before the file name in it; -1 where there is none.
static int BeforeFileName(const wchar_t* argument) {
    static const wchar_t* const options[] = {L"-I", L"-L", L"-o", L"-B"};
    if (argument[0] != L'-')
        return 0;
    for (size_t i = 0; i < sizeof options / sizeof *options; ++i)
        if (wcsncmp(argument, options[i], 2) == 0 && argument[2] != 0)
            return 2;
    return -1;
}

static char* Argument(const wchar_t* argument, UnixFileName unixFileName) {
    int before = BeforeFileName(argument);
    if (before < 0)
        return Utf8(argument);
    wchar_t full[MAX_PATH * 4];
    char* name = NULL;
    if (GetFullPathNameW(argument + before, sizeof full / sizeof *full, full, NULL))
        name = unixFileName(full);
    if (!name)
        return Utf8(argument);
    const wchar_t* end = argument + wcslen(argument) - 1;
    if (end > argument && *end == L'.' && end[-1] != L'\\' && name[strlen(name) - 1] != '.') /* Windows drops it */
        name = Joined(name, ".");
    wchar_t option[3] = {0};
    wcsncpy(option, argument, (size_t)before);
    return Joined(Utf8(option), name);
}

// A path as the caller wrote it, and as the compiler got it.
typedef struct {
    char* given;
    char* handed;
} Path;

// The longest path at the front of the text; NULL for none.
static const Path* PathAt(const char* text, const Path* paths, size_t count) {
    const Path* longest = NULL;
    for (size_t i = 0; i < count; ++i)
        if (strncmp(text, paths[i].handed, strlen(paths[i].handed)) == 0 &&
            (!longest || strlen(longest->handed) < strlen(paths[i].handed)))
            longest = &paths[i];
    return longest;
}

// A compiler names files as they were given to it.
static int PrintAndRemove(const wchar_t* name, const Path* paths, size_t count, FILE* to) {
    FILE* file = _wfopen(name, L"rb");
    if (!file)
        return Fail("the compiler's output is not there");
    fseek(file, 0, SEEK_END);
    size_t size = (size_t)ftell(file);
    rewind(file);
    char* text = calloc(size + 1, 1);
    size = fread(text, 1, size, file);
    fclose(file);
    _wremove(name);
    for (const char* at = text; at < text + size;) {
        const Path* path = PathAt(at, paths, count);
        if (path) {
            fputs(path->given, to);
            at += strlen(path->handed);
        } else {
            fputc(*at++, to);
        }
    }
    return 0;
}

// Where the 32-bit Wine lives in a root of its own, the machine with its compilers is at /host.
static const char script[] = "out=$1; shift; host=; [ -d /host/usr ] && host='chroot /host'; exec >\"$out\" 2>&1; "
                             "exec $host /bin/sh -c 'cd \"$0\" && exec " COMPILER " \"$@\"' \"$@\"";

int wmain(int count, wchar_t** arguments) {
    SpawnUnix spawn = (SpawnUnix)(void*)GetProcAddress(GetModuleHandleW(L"ntdll"), "__wine_unix_spawnvp");
    UnixFileName unixFileName =
        (UnixFileName)(void*)GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name");
    if (!spawn || !unixFileName)
        return Fail("this stand-in for a compiler runs under Wine alone");

    wchar_t folder[MAX_PATH], output[MAX_PATH], current[MAX_PATH * 4];
    if (!GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"gcc", 0, output))
        return Fail("no temporary file");
    GetCurrentDirectoryW(sizeof current / sizeof *current, current);

    char** unixArguments = calloc((size_t)count + 6, sizeof *unixArguments);
    int used = 0;
    unixArguments[used++] = "/bin/sh";
    unixArguments[used++] = "-c";
    unixArguments[used++] = (char*)script;
    unixArguments[used++] = "gcc.exe";
    unixArguments[used++] = unixFileName(output);
    unixArguments[used++] = unixFileName(current);
    Path* paths = calloc((size_t)count, sizeof *paths);
    size_t pathCount = 0;
    for (int i = 1; i < count; ++i) {
        unixArguments[used++] = Argument(arguments[i], unixFileName);
        int before = BeforeFileName(arguments[i]);
        if (before >= 0)
            paths[pathCount++] = (Path){Utf8(arguments[i] + before), unixArguments[used - 1] + before};
    }

    int status = (int)spawn(unixArguments, TRUE);
    if (PrintAndRemove(output, paths, pathCount, status == 0 ? stdout : stderr) != 0)
        return 1;
    return status;
}
