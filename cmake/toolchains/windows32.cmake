# 32-bit Windows, by the cross compiler of Debian. Without both SSE options the arithmetic would be
# that of the x87, whose results are others.
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
foreach(language C CXX)
  set(CMAKE_${language}_FLAGS_INIT "-msse2 -mfpmath=sse")
endforeach()
# Its programs run under a 32-bit Wine, where there is one: Debian has it for i386 alone (wine32:i386).
if(EXISTS /usr/lib/wine/wine)
  set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine)
endif()
