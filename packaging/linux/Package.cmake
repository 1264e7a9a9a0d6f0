# `cpack` makes two Debian packages of what is installed: the companion, and the stand-in bridge.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VERSION "${VORNA_PACKAGE_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "${VORNA_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
# Nothing of what a fetched dependency would install.
set(CPACK_COMPONENTS_ALL companion bridge)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(CPACK_DEBIAN_COMPANION_PACKAGE_NAME vorna-companion)
set(CPACK_DEBIAN_COMPANION_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPANION_PACKAGE_RECOMMENDS
    "default-dbus-session-bus | dbus-session-bus, hicolor-icon-theme, qt6-gtk-platformtheme, qt6-wayland")
set(CPACK_DEBIAN_COMPANION_PACKAGE_SUGGESTS "gnome-shell-extension-appindicator, vorna-stand-in-bridge")
file(CONFIGURE OUTPUT "${MADE}/conffiles" CONTENT "${VORNA_AUTOSTART_FOLDER}/vorna-companion.desktop\n")
set(CPACK_DEBIAN_COMPANION_PACKAGE_CONTROL_EXTRA "${MADE}/conffiles")
set(CPACK_DEBIAN_COMPANION_DESCRIPTION "tray companion for a developer's workstation
Sits in the system tray and asks the local bridge of the vorna platform every
five seconds how this machine is doing: load, memory, disk, Caddy with its
sites, PostgreSQL, and every other service that the bridge probes. It says so
in one icon and one small panel. It starts at login.")

set(CPACK_DEBIAN_BRIDGE_PACKAGE_NAME vorna-stand-in-bridge)
set(CPACK_DEBIAN_BRIDGE_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_BRIDGE_PACKAGE_DEPENDS
    "python3 (>= 3.9), python3-fastapi, python3-h11, python3-psutil, python3-pydantic, python3-uvicorn")
set(CPACK_DEBIAN_BRIDGE_PACKAGE_ENHANCES vorna-companion)
set(CPACK_DEBIAN_BRIDGE_DESCRIPTION "bridge of the vorna platform for machines without it
Answers on the loopback interface with the real figures of this machine, so
that the companion has something to show where the platform is not installed.
It does not start by itself; a user's systemd can be told to start it.")
include(CPack)
