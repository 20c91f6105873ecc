# 64-bit ARM Linux, by the cross compiler of Debian. Programs run under qemu's emulation of the processor;
# libraries are those that Debian has for this architecture, its C library among them.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig)
# The library alone: the header is that of the machine's own package.
set(ZLIB_LIBRARY /usr/lib/aarch64-linux-gnu/libz.so.1)
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/qemu-aarch64)
