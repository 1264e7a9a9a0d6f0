# Makes a bundle of the companion: vorna.app in the build folder, ready to be started there; `cpack` makes a disk image
# of it with Qt inside. Signed ad hoc: it runs on the machine that built it, and elsewhere after its user allowed it.

find_program(VORNA_CODESIGN codesign REQUIRED)
find_program(VORNA_MACDEPLOYQT macdeployqt HINTS "${Qt6_DIR}/../../../bin" REQUIRED)

set(ICON "${CMAKE_CURRENT_LIST_DIR}/vorna.icns")
target_sources(vorna-companion PRIVATE "${ICON}")
set_source_files_properties("${ICON}" PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
set_target_properties(vorna-companion PROPERTIES
    OUTPUT_NAME vorna
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST "${CMAKE_CURRENT_LIST_DIR}/Info.plist.in"
    MACOSX_BUNDLE_GUI_IDENTIFIER dev.vorna.companion
    MACOSX_BUNDLE_SHORT_VERSION_STRING "${PROJECT_VERSION}"
    MACOSX_BUNDLE_BUNDLE_VERSION "${VORNA_BUILD_NUMBER}")

# The linker signs the program alone; notifications want a signature of the whole bundle.
add_custom_command(TARGET vorna-companion POST_BUILD
    COMMAND "${VORNA_CODESIGN}" --force --sign - "$<TARGET_BUNDLE_DIR:vorna-companion>"
    VERBATIM)

install(TARGETS vorna-companion BUNDLE DESTINATION . COMPONENT vorna)
install(CODE "
    set(BUNDLE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/vorna.app\")
    execute_process(COMMAND \"${VORNA_MACDEPLOYQT}\" \"\${BUNDLE}\" -verbose=1 COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND \"${VORNA_CODESIGN}\" --force --deep --sign - \"\${BUNDLE}\" COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND \"${VORNA_CODESIGN}\" --verify --deep --strict \"\${BUNDLE}\" COMMAND_ERROR_IS_FATAL ANY)"
    COMPONENT vorna)

set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_NAME vorna)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_FILE_NAME "vorna-${PROJECT_VERSION}-arm64")
set(CPACK_DMG_VOLUME_NAME vorna)
# Nothing of what a fetched dependency would install.
set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};${PROJECT_NAME};vorna;/")
include(CPack)
