# Cross-compiling for 64-bit Arm Linux nodes (aarch64) with GNU's cross
# toolchain, e.g. Debian's crossbuild-essential-arm64:
#
#   cmake -S . -B build-arm64 -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/aarch64-linux-gnu.cmake
#
# Libraries are found one of two ways:
# - Debian multiarch (the default): the :arm64 development packages
#   (libxml2-dev:arm64, liblttng-ust-dev:arm64, ...) beside the host's, below
#   /usr/lib/aarch64-linux-gnu;
# - a sysroot: the node's SDK, given as VOSK_AARCH64_SYSROOT (a CMake
#   variable or an environment variable); then only the sysroot is searched
#   for libraries, headers and pkg-config files.
#
# VOSK_AARCH64_PREFIX (default aarch64-linux-gnu-) names the compilers,
# e.g. /opt/sdk/bin/aarch64-linux-gnu-.
#
# Nothing here runs what is built: to run the tests on an x86-64 machine,
# give CMAKE_CROSSCOMPILING_EMULATOR as well (make check-arm64 does; see
# docs/building.md).

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

# Read again for every try_compile: pass the settings on to those projects.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VOSK_AARCH64_PREFIX VOSK_AARCH64_SYSROOT)

if(NOT VOSK_AARCH64_PREFIX)
  set(VOSK_AARCH64_PREFIX "aarch64-linux-gnu-")
endif()
if(NOT VOSK_AARCH64_SYSROOT AND DEFINED ENV{VOSK_AARCH64_SYSROOT})
  set(VOSK_AARCH64_SYSROOT "$ENV{VOSK_AARCH64_SYSROOT}")
endif()

set(CMAKE_C_COMPILER "${VOSK_AARCH64_PREFIX}gcc")
set(CMAKE_CXX_COMPILER "${VOSK_AARCH64_PREFIX}g++")

# Programs (code generators, the emulator) are the build machine's own.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

if(VOSK_AARCH64_SYSROOT)
  set(CMAKE_SYSROOT "${VOSK_AARCH64_SYSROOT}")
  set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
  set(ENV{PKG_CONFIG_SYSROOT_DIR} "${VOSK_AARCH64_SYSROOT}")
  set(ENV{PKG_CONFIG_LIBDIR}
      "${VOSK_AARCH64_SYSROOT}/usr/lib/aarch64-linux-gnu/pkgconfig:${VOSK_AARCH64_SYSROOT}/usr/lib/pkgconfig:${VOSK_AARCH64_SYSROOT}/usr/share/pkgconfig")
else()
  # Multiarch: the compiler finds /usr/lib/aarch64-linux-gnu itself and CMake
  # searches it through CMAKE_LIBRARY_ARCHITECTURE; pkg-config must read only
  # the arm64 .pc files, never the host's.
  set(ENV{PKG_CONFIG_LIBDIR} "/usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig")
  unset(ENV{PKG_CONFIG_PATH})
endif()
