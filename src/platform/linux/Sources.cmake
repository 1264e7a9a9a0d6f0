# The capabilities that the model needs link no Widgets; the item in the tray does, so it is a library of its own.

vorna_library(vorna_platform
    SOURCES
        platform/linux/AccessibilityTrust.cpp
        platform/linux/AppInfo.cpp
        platform/linux/ChildDescriptors.cpp
        platform/linux/Launch.cpp
        platform/linux/NotificationCenter.cpp
        platform/linux/SingleInstance.cpp
        platform/linux/Symbol.cpp
        platform/linux/SystemSettings.cpp
        platform/linux/UserDefaults.cpp
        ../resources/symbols.qrc
    LINKS vorna_support Qt6::Gui Qt6::Svg Qt6::Network Qt6::DBus)
target_compile_definitions(vorna_platform PRIVATE
    VORNA_VERSION="${PROJECT_VERSION}"
    VORNA_BUILD="${VORNA_BUILD_NUMBER}")

vorna_library(vorna_tray
    SOURCES
        platform/linux/StatusItem.cpp
    LINKS vorna_platform Qt6::Widgets PkgConfig::XCB)
