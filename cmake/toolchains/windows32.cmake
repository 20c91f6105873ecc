# 32-bit Windows, by the cross compiler of Debian. Without both SSE options the arithmetic would be
# that of the x87, whose results are others.
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
