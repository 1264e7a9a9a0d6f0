# The program's icon at every size that a desktop asks for.
set(ICON_SIDES 16 22 24 32 48 64 128 256)
set(ICONS)
foreach(SIDE ${ICON_SIDES})
    list(APPEND ICONS "${PROJECT_BINARY_DIR}/icons/${SIDE}.png")
endforeach()
set(DRAWING "${CMAKE_CURRENT_LIST_DIR}/vorna-companion.svg")
add_custom_command(OUTPUT ${ICONS}
    COMMAND ${CMAKE_COMMAND} -E make_directory "${PROJECT_BINARY_DIR}/icons"
    COMMAND application-icon "${DRAWING}" ${ICONS}
    DEPENDS application-icon "${DRAWING}"
    VERBATIM)

# Those that the companion has with it. The first format keeps no times, so that builds can be compared.
configure_file("${CMAKE_CURRENT_LIST_DIR}/application.qrc" "${PROJECT_BINARY_DIR}/icons/application.qrc" COPYONLY)
qt_add_resources(ICON_RESOURCES "${PROJECT_BINARY_DIR}/icons/application.qrc" OPTIONS --format-version 1)
