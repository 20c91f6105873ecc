# 32-bit Linux on a 64-bit one, whose processor runs the programs. Without both SSE options the
# arithmetic would be that of the x87, whose results are others.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_CXX_COMPILER g++)
string(APPEND CMAKE_CXX_FLAGS_INIT "-m32 -msse2 -mfpmath=sse")
