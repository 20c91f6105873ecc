# 64-bit Windows, by the cross compiler of Debian. Programs run under Wine.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
