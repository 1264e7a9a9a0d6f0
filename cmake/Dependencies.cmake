# QCoro comes from the system where it is packaged, else from its own repository at a fixed tag.
find_package(QCoro6 0.7 QUIET COMPONENTS Core)
if(NOT QCoro6_FOUND)
    include(FetchContent)
    set(QCORO_BUILD_EXAMPLES OFF)
    set(QCORO_WITH_QML OFF)
    set(QCORO_WITH_QTQUICK OFF)
    set(QCORO_WITH_QTWEBSOCKETS OFF)
    set(QCORO_WITH_QTDBUS OFF)
    FetchContent_Declare(qcoro
        GIT_REPOSITORY https://github.com/qcoro/qcoro.git
        GIT_TAG v0.10.0)
    FetchContent_MakeAvailable(qcoro)
endif()

if(NOT APPLE)
    find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
endif()
