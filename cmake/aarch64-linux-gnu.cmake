# Cross build for AArch64 against Debian's arm64 packages (dpkg --add-architecture arm64);
# programs built here run under qemu-user with the arm64 libraries of the host's root.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
