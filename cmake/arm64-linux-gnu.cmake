# Builds for 64-bit ARM with Debian's cross compiler and its arm64 libraries, installed beside the native
# ones: cmake -DCMAKE_TOOLCHAIN_FILE=cmake/arm64-linux-gnu.cmake.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_STRIP aarch64-linux-gnu-strip)

# Else pkg-config would answer for the machine that builds.
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig)

# What runs the unit tests here.
find_program(QEMU_AARCH64 NAMES qemu-aarch64 qemu-aarch64-static)
if(QEMU_AARCH64)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${QEMU_AARCH64})
endif()

set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
