# QCoro comes from the system where it is packaged, else from its own repository at a fixed tag: the first that compiles
# with the C++ library of Xcode 16.3 and later.
find_package(QCoro6 0.7 QUIET COMPONENTS Core)
if(NOT QCoro6_FOUND)
    include(FetchContent)
    foreach(PART BUILD_EXAMPLES BUILD_TESTING WITH_QML WITH_QTDBUS WITH_QTNETWORK WITH_QTQUICK WITH_QTTEST
            WITH_QTWEBSOCKETS)
        set(QCORO_${PART} OFF)
    endforeach()
    FetchContent_Declare(qcoro
        GIT_REPOSITORY https://github.com/qcoro/qcoro.git
        GIT_TAG v0.11.0
        GIT_SHALLOW ON
        SYSTEM)
    FetchContent_MakeAvailable(qcoro)
    target_compile_options(QCoro6Core PRIVATE -Wno-error)
endif()

find_package(nlohmann_json 3.11 REQUIRED)

if(NOT APPLE)
    find_package(Qt6 6.4 REQUIRED COMPONENTS DBus Svg)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
endif()
