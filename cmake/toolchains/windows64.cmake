# 64-bit Windows, by the cross compiler of Debian. Programs run under Wine.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
# The compiler trusts the stack to be aligned for wide vectors, which this system does not promise.
foreach(language C CXX)
  set(CMAKE_${language}_FLAGS_INIT -Wa,-muse-unaligned-vector-move)
endforeach()
cmake_path(SET CMAKE_CROSSCOMPILING_EMULATOR NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../tools/wine64)
