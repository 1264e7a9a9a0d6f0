# `cmake --install` puts what follows where desktops look for it; Package.cmake makes packages of it.
include(GNUInstallDirs)
set(VORNA_AUTOSTART_FOLDER /etc/xdg/autostart CACHE PATH "Where desktops look for what is started at login, whatever the prefix")
set(VORNA_MAINTAINER "vorna companion developers <developers@vorna.invalid>" CACHE STRING "Who answers for a package: NAME <ADDRESS>")
set(VORNA_HOMEPAGE "https://vorna.localhost" CACHE STRING "Address of the project, for software catalogues")
set(VORNA_PICTURES "" CACHE STRING "Address of a web folder with the pictures of docs/, for software catalogues")
set(HERE "${CMAKE_CURRENT_LIST_DIR}")
set(MADE "${PROJECT_BINARY_DIR}/packaging")

# vorna_compressed(FILE COMMAND … DEPENDS …): FILE of what a command prints, the same bytes each time.
function(vorna_compressed FILE)
    cmake_parse_arguments(FILE "" "" "COMMAND;DEPENDS" ${ARGN})
    add_custom_command(OUTPUT "${FILE}" COMMAND ${FILE_COMMAND} | gzip -9n > "${FILE}" DEPENDS ${FILE_DEPENDS} VERBATIM)
endfunction()

# vorna_install_documents(PACKAGE COMPONENT): its manual page, changes and copyright.
function(vorna_install_documents PACKAGE COMPONENT)
    set(PAGE "${MADE}/${PACKAGE}.1.gz")
    set(CHANGES "${MADE}/${COMPONENT}/changelog.gz")
    file(MAKE_DIRECTORY "${MADE}/${COMPONENT}")
    vorna_compressed("${PAGE}" COMMAND cat "${HERE}/${PACKAGE}.1" DEPENDS "${HERE}/${PACKAGE}.1")
    vorna_compressed("${CHANGES}"
        COMMAND "${VORNA_PYTHON}" -B "${PROJECT_SOURCE_DIR}/packaging/changes" debian
            "${PACKAGE}" "${VORNA_PACKAGE_VERSION}" "${VORNA_MAINTAINER}"
        DEPENDS "${PROJECT_SOURCE_DIR}/packaging/changes" "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
    add_custom_target(${PACKAGE}-documents ALL DEPENDS "${PAGE}" "${CHANGES}")
    install(FILES "${PAGE}" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${COMPONENT})
    install(FILES "${CHANGES}" "${HERE}/copyright" DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${PACKAGE}
        COMPONENT ${COMPONENT})
endfunction()

# The libraries of one release are not those of another, and a newer release's package is the newer one.
cmake_host_system_information(RESULT RELEASE QUERY DISTRIB_INFO)
set(VORNA_PACKAGE_VERSION "${PROJECT_VERSION}+${RELEASE_ID}${RELEASE_VERSION_ID}")

install(TARGETS vorna-companion RUNTIME COMPONENT companion)
vorna_install_documents(vorna-companion companion)
install(FILES "${HERE}/vorna-companion.desktop" DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT companion)
install(FILES "${HERE}/vorna-companion.desktop" DESTINATION "${VORNA_AUTOSTART_FOLDER}" COMPONENT companion)
set(HICOLOR ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES "${PROJECT_SOURCE_DIR}/resources/vorna-companion.svg" DESTINATION ${HICOLOR}/scalable/apps
    COMPONENT companion)
get_directory_property(ICON_SIDES DIRECTORY src DEFINITION ICON_SIDES)
foreach(SIDE ${ICON_SIDES})
    install(FILES "${PROJECT_BINARY_DIR}/icons/${SIDE}.png" DESTINATION ${HICOLOR}/${SIDE}x${SIDE}/apps
        RENAME vorna-companion.png COMPONENT companion)
endforeach()

file(STRINGS "${PROJECT_SOURCE_DIR}/CHANGELOG.md" RELEASE_HEADING REGEX "^## ${PROJECT_VERSION}, " LIMIT_COUNT 1)
string(REGEX MATCH "[0-9-]+$" VORNA_RELEASE_DATE "${RELEASE_HEADING}")
if(NOT VORNA_RELEASE_DATE)
    message(FATAL_ERROR "CHANGELOG.md has no heading `## ${PROJECT_VERSION}, YEAR-MONTH-DAY`.")
endif()
set(METAINFO "${MADE}/dev.vorna.companion.metainfo.xml")
file(READ "${HERE}/dev.vorna.companion.metainfo.xml" CONTENT)
if(NOT VORNA_PICTURES)
    string(REGEX REPLACE " *<screenshots>.*</screenshots>\n" "" CONTENT "${CONTENT}")
endif()
file(CONFIGURE OUTPUT "${METAINFO}" CONTENT "${CONTENT}" @ONLY)
install(FILES "${METAINFO}" DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT companion)

set(BRIDGE_FOLDER ${CMAKE_INSTALL_DATADIR}/vorna-stand-in-bridge)
install(PROGRAMS "${PROJECT_SOURCE_DIR}/devtools/stand-in-bridge" DESTINATION ${BRIDGE_FOLDER} COMPONENT bridge)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/devtools/bridge" DESTINATION ${BRIDGE_FOLDER} COMPONENT bridge
    FILES_MATCHING PATTERN "*.py")
file(CREATE_LINK "../share/vorna-stand-in-bridge/stand-in-bridge" "${MADE}/vorna-stand-in-bridge" SYMBOLIC)
install(FILES "${MADE}/vorna-stand-in-bridge" DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT bridge)
install(FILES "${HERE}/vorna-stand-in-bridge.service" DESTINATION lib/systemd/user COMPONENT bridge)
vorna_install_documents(vorna-stand-in-bridge bridge)

include("${HERE}/Package.cmake")
