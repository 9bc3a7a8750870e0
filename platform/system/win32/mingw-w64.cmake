# MinGW-w64 as Debian has it, for the processor that the including toolchain file has set: MINGW_TARGET is the beginning
# of the tools' names. The posix variant brings the threads of the standard library.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${MINGW_TARGET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${MINGW_TARGET}-g++-posix)
set(CMAKE_RC_COMPILER ${MINGW_TARGET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${MINGW_TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_C_FLAGS_INIT "${MINGW_FLAGS} -ffunction-sections -fdata-sections")
set(CMAKE_CXX_FLAGS_INIT "${CMAKE_C_FLAGS_INIT}")

# Small programs that need nothing beside Windows. Sections that begin on a page of the file are mapped into memory
# instead of being copied, which starts a program sooner.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--gc-sections -Wl,--file-alignment=4096 -s")
