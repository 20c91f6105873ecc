# 32-bit Linux on a 64-bit one, whose processor runs the programs. Without both SSE options the
# arithmetic would be that of the x87, whose results are others. The headers of the kernel are those of 64
# bits; Debian's g++-multilib would show them by a link, but excludes the compilers of other processors.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
foreach(language C CXX)
  set(CMAKE_${language}_FLAGS_INIT "-m32 -msse2 -mfpmath=sse -idirafter /usr/include/x86_64-linux-gnu")
endforeach()
# Debian keeps the libraries of each architecture in a folder of its own.
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/i386-linux-gnu/pkgconfig:/usr/share/pkgconfig)
# The library alone: the headers are those of the 64-bit package, and that of 32 bits wants a C library of
# its own.
set(ZLIB_LIBRARY /usr/lib/i386-linux-gnu/libz.so.1)
