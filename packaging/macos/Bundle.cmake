# Makes a bundle of the companion: vorna.app in the build folder, ready to be started there; `cpack` makes a disk image
# of it with Qt inside.

set(VORNA_SIGN_IDENTITY - CACHE STRING "Who signs the bundle, as codesign calls them; `-` signs ad hoc")
find_program(VORNA_CODESIGN codesign REQUIRED)
find_program(VORNA_MACDEPLOYQT macdeployqt HINTS "${Qt6_DIR}/../../../bin" REQUIRED)
find_program(VORNA_OTOOL otool REQUIRED)
set(SIGN "${VORNA_CODESIGN}" --force --sign "${VORNA_SIGN_IDENTITY}")
if(NOT VORNA_SIGN_IDENTITY STREQUAL "-")
    list(APPEND SIGN --options runtime --timestamp)
endif()

set(ICON "${CMAKE_CURRENT_LIST_DIR}/vorna.icns")
target_sources(vorna-companion PRIVATE "${ICON}")
set_source_files_properties("${ICON}" PROPERTIES MACOSX_PACKAGE_LOCATION Resources)

# The signature covers both, so both are inputs of what ends with signing.
set(INFORMATION "${PROJECT_BINARY_DIR}/Info.plist")
configure_file("${CMAKE_CURRENT_LIST_DIR}/Info.plist.in" "${INFORMATION}")
set_target_properties(vorna-companion PROPERTIES
    OUTPUT_NAME vorna
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST "${INFORMATION}"
    LINK_DEPENDS "${INFORMATION};${ICON}"
    INSTALL_RPATH "@executable_path/../Frameworks")

# The linker signs the program alone; notifications want a signature of the whole bundle.
add_custom_command(TARGET vorna-companion POST_BUILD
    COMMAND ${SIGN} "$<TARGET_BUNDLE_DIR:vorna-companion>"
    VERBATIM)

install(TARGETS vorna-companion BUNDLE DESTINATION . COMPONENT vorna)
install(CODE "
    set(BUNDLE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/vorna.app\")
    set(QT_PREFIX \"${Qt6_DIR}/../../..\")
    set(MACDEPLOYQT \"${VORNA_MACDEPLOYQT}\")
    set(OTOOL \"${VORNA_OTOOL}\")
    set(CODESIGN \"${VORNA_CODESIGN}\")
    set(SIGN \"${SIGN}\")"
    COMPONENT vorna)
install(SCRIPT "${CMAKE_CURRENT_LIST_DIR}/Deploy.cmake" COMPONENT vorna)

set(ARCHITECTURE "${CMAKE_OSX_ARCHITECTURES}")
if(NOT ARCHITECTURE)
    set(ARCHITECTURE "${CMAKE_SYSTEM_PROCESSOR}")
endif()
string(REPLACE ";" "-" ARCHITECTURE "${ARCHITECTURE}")

set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_NAME vorna)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_FILE_NAME "vorna-${PROJECT_VERSION}-${ARCHITECTURE}")
set(CPACK_DMG_VOLUME_NAME vorna)
# Nothing of what a fetched dependency would install.
set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};${PROJECT_NAME};vorna;/")
include(CPack)
