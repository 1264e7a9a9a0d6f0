# Compiles and links for macOS 14 on arm64, against headers and stubs that stand in for the system. What comes out was
# checked by compiler and linker; it cannot run anywhere. VORNA_MAC_KIT is the folder that make_kit.py wrote to.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_OSX_ARCHITECTURES arm64)
set(CMAKE_OSX_DEPLOYMENT_TARGET 14.0)
set(CMAKE_OSX_SYSROOT "" CACHE STRING "")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VORNA_MAC_KIT)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(VORNA_MAC_LLVM /usr/lib/llvm-19 CACHE PATH "The compiler and the C++ library to take")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VORNA_MAC_LLVM)
set(COMPILE "-nostdinc++ -nostdlibinc -isystem ${CMAKE_CURRENT_LIST_DIR} -isystem ${CMAKE_CURRENT_LIST_DIR}/../headers")
string(APPEND COMPILE " -isystem ${VORNA_MAC_LLVM}/include/c++/v1 -isystem ${VORNA_MAC_KIT}/sysroot -D_BSD_SOURCE")
set(OBJECTIVE "-isystem ${CMAKE_CURRENT_LIST_DIR}/../headers-arc -isystem /usr/include/GNUstep -isystem /usr/include/x86_64-linux-gnu/GNUstep -DNO_GNUSTEP=1 -DGNUSTEP")
string(APPEND OBJECTIVE " -DGNUSTEP_BASE_LIBRARY=1 -DGNU_GUI_LIBRARY=1")
foreach(LANGUAGE C CXX OBJCXX)
    set(CMAKE_${LANGUAGE}_COMPILER_TARGET arm64-apple-macos14)
endforeach()
set(CMAKE_C_COMPILER ${VORNA_MAC_LLVM}/bin/clang)
set(CMAKE_CXX_COMPILER ${VORNA_MAC_LLVM}/bin/clang++)
set(CMAKE_OBJCXX_COMPILER ${VORNA_MAC_LLVM}/bin/clang++)
set(CMAKE_CXX_FLAGS_INIT "${COMPILE}")
set(CMAKE_OBJCXX_FLAGS_INIT "${COMPILE} ${OBJECTIVE}")

set(CMAKE_AR /usr/bin/llvm-ar-19)
set(CMAKE_RANLIB /usr/bin/llvm-ranlib-19)
set(CMAKE_INSTALL_NAME_TOOL /bin/true)
set(STUBS "${VORNA_MAC_KIT}/stubs")
string(CONCAT CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld --ld-path=/usr/bin/ld64.lld-19 -nostdlib -L${STUBS} -F${STUBS}"
    " -lSystem -Wl,-undefined,dynamic_lookup")

# Tools of the Mac that the bundle is finished with; the first keeps a list of what it was asked.
set(VORNA_CODESIGN "${VORNA_MAC_KIT}/codesign" CACHE FILEPATH "")
set(VORNA_MACDEPLOYQT /bin/true CACHE FILEPATH "")
set(VORNA_OTOOL /bin/true CACHE FILEPATH "")

set(CMAKE_FIND_FRAMEWORK NEVER)
set(CMAKE_PROJECT_INCLUDE "${CMAKE_CURRENT_LIST_DIR}/project.cmake")
