# 32-bit Windows.
set(CMAKE_SYSTEM_PROCESSOR x86)
set(MINGW_TARGET i686-w64-mingw32)
# Arithmetic as on 64 bits; every processor that Windows still runs on can do it.
set(MINGW_FLAGS "-march=pentium4 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
