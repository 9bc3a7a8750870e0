// A program that must not run. Leaves its own path with .ran behind it, a file that holds the current folder.
#include <stdio.h>
#include <string.h>
#include <windows.h>

int main(void) {
    char name[MAX_PATH + sizeof ".ran"] = "";
    char folder[MAX_PATH] = "";
    GetModuleFileNameA(NULL, name, MAX_PATH);
    GetCurrentDirectoryA(MAX_PATH, folder);
    FILE* mark = fopen(strcat(name, ".ran"), "w");
    if (!mark)
        return 1;
    fputs(folder, mark);
    return fclose(mark);
}
