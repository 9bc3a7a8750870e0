# 64-bit Windows.
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(MINGW_TARGET x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
