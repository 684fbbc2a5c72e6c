# Builds for 32-bit ARM (armhf) with Debian's cross compiler and its armhf libraries, installed beside the native
# ones: cmake -DCMAKE_TOOLCHAIN_FILE=cmake/arm-linux-gnueabihf.cmake.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_STRIP arm-linux-gnueabihf-strip)

# Else pkg-config would answer for the machine that builds.
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/arm-linux-gnueabihf/pkgconfig:/usr/share/pkgconfig)

# What runs the unit tests here.
find_program(QEMU_ARM NAMES qemu-arm qemu-arm-static)
if(QEMU_ARM)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${QEMU_ARM})
endif()

set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
