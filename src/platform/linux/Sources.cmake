# The capabilities that the model needs link no Widgets; the item in the tray does, so it is a library of its own.
# A header of this folder's parent with Q_OBJECT is listed, so that its meta-object is made.

set(SYMBOL_DRAWINGS "${PROJECT_BINARY_DIR}/SymbolDrawings.cpp")
file(GLOB SYMBOLS CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/resources/symbols/*.svg")
add_custom_command(OUTPUT "${SYMBOL_DRAWINGS}"
    COMMAND symbol-paths "${SYMBOL_DRAWINGS}" ${SYMBOLS}
    DEPENDS symbol-paths ${SYMBOLS}
    VERBATIM)

vorna_library(vorna_platform
    SOURCES
        platform/DrawnIcon.cpp
        platform/FontDesign.cpp
        platform/SingleInstance.h
        platform/linux/AppInfo.cpp
        platform/linux/ChildDescriptors.cpp
        platform/linux/ColourScheme.cpp
        platform/linux/Desktop.cpp
        platform/linux/FontDesign.cpp
        platform/linux/NotificationService.cpp
        platform/linux/Session.cpp
        platform/linux/SingleInstance.cpp
        platform/linux/Symbol.cpp
        platform/linux/SystemSettings.cpp
        platform/linux/UserDefaults.cpp
        platform/linux/X11.cpp
        "${SYMBOL_DRAWINGS}"
    LINKS vorna_support Qt6::Gui Qt6::DBus PkgConfig::XCB)
target_compile_definitions(vorna_platform PRIVATE
    VORNA_VERSION="${PROJECT_VERSION}"
    VORNA_BUILD="${VORNA_BUILD_NUMBER}")

vorna_library(vorna_tray
    SOURCES
        platform/StatusItem.h
        platform/linux/StatusItem.cpp
        platform/linux/StatusNotifierHostWatch.cpp
        platform/linux/TrayIcon.cpp
        platform/linux/XembedTrayWatch.cpp
    LINKS vorna_platform Qt6::Widgets)
