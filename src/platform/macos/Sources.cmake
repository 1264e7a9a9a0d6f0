# The same libraries as on other desktops, each capability by one file. A header of this folder's parent with Q_OBJECT is
# listed, so that its meta-object is made.

vorna_library(vorna_platform
    SOURCES
        platform/DrawnIcon.cpp
        platform/FontDesign.cpp
        platform/SingleInstance.h
        platform/macos/Action.mm
        platform/macos/AppInfo.mm
        platform/macos/ChildDescriptors.cpp
        platform/macos/Desktop.mm
        platform/macos/FontDesign.mm
        platform/macos/NativeString.mm
        platform/macos/NotificationService.mm
        platform/macos/SingleInstance.mm
        platform/macos/Symbol.mm
        platform/macos/SystemSettings.cpp
        platform/macos/UserDefaults.mm
    LINKS
        vorna_support
        Qt6::Gui
        "-framework AppKit"
        "-framework ApplicationServices"
        "-framework CoreText"
        "-framework Foundation"
        "-framework UserNotifications")

vorna_library(vorna_tray
    SOURCES
        platform/StatusItem.h
        platform/macos/MenuBar.cpp
        platform/macos/StatusItem.mm
    LINKS vorna_platform)

# What the system calls deprecated has no successor that does the same.
foreach(LIBRARY vorna_platform vorna_tray)
    target_compile_options(${LIBRARY} PRIVATE
        "$<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc;-Wno-deprecated-declarations>")
endforeach()
