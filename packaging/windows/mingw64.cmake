# Builds for 64-bit Windows by Debian's mingw-w64. Libraries come from the folder that build-libraries has
# filled, the one that the environment variable QUILLON_WINDOWS_LIBRARIES names, else
# build/windows-libraries; and from those in CMAKE_PREFIX_PATH.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triple x86_64-w64-mingw32)
# The plain names stand for the win32 thread model, which lacks std::thread.
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

set(libraries "$ENV{QUILLON_WINDOWS_LIBRARIES}")
if(NOT libraries)
  get_filename_component(libraries ${CMAKE_CURRENT_LIST_DIR}/../../build/windows-libraries ABSOLUTE)
endif()
set(CMAKE_FIND_ROOT_PATH ${libraries} ${CMAKE_PREFIX_PATH} /usr/${triple})
# Never those of the machine that builds.
set(ENV{PKG_CONFIG_LIBDIR} ${libraries}/lib/pkgconfig)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Files that need none of the compiler's libraries beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine)
