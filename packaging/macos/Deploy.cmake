# Puts Qt into an installed bundle and signs it. Given: BUNDLE, QT_PREFIX, MACDEPLOYQT, OTOOL, CODESIGN, SIGN (a list).

# Homebrew keeps each module of Qt in a formula of its own; they find each other by @rpath, which macdeployqt does not
# follow from one to another.
file(GLOB LIBRARY_FOLDERS LIST_DIRECTORIES ON "${QT_PREFIX}/lib" "${QT_PREFIX}/opt/qt*/lib")
list(TRANSFORM LIBRARY_FOLDERS PREPEND -libpath=)

execute_process(COMMAND "${MACDEPLOYQT}" "${BUNDLE}" -verbose=1 -no-codesign ${LIBRARY_FOLDERS}
    OUTPUT_VARIABLE SAID ERROR_VARIABLE SAID COMMAND_ERROR_IS_FATAL ANY)
message(STATUS "${SAID}")
if(SAID MATCHES "Cannot resolve rpath")
    message(FATAL_ERROR "macdeployqt did not find all of Qt: the bundle would not start elsewhere.")
endif()

file(GLOB_RECURSE PROGRAMS "${BUNDLE}/Contents/MacOS/*" "${BUNDLE}/Contents/*.dylib"
    "${BUNDLE}/Contents/Frameworks/*.framework/Versions/A/Qt*")
foreach(PROGRAM ${PROGRAMS})
    execute_process(COMMAND "${OTOOL}" -L "${PROGRAM}" OUTPUT_VARIABLE NEEDS COMMAND_ERROR_IS_FATAL ANY)
    get_filename_component(NAME "${PROGRAM}" NAME)
    string(REGEX MATCHALL "\n[ \t]+/(opt|usr/local|Users)/[^ \n]*" OUTSIDE "${NEEDS}")
    list(FILTER OUTSIDE EXCLUDE REGEX "/${NAME}$") # its own name comes first
    if(OUTSIDE)
        message(FATAL_ERROR "${PROGRAM} needs what is outside the bundle: ${OUTSIDE}")
    endif()
endforeach()

execute_process(COMMAND ${SIGN} --deep "${BUNDLE}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${CODESIGN}" --verify --deep --strict "${BUNDLE}" COMMAND_ERROR_IS_FATAL ANY)
