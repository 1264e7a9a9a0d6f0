# What every target of the project is compiled with.
add_library(vorna_options INTERFACE)
target_compile_definitions(vorna_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CONTEXTLESS_CONNECT
    QT_NO_FOREACH
    QT_NO_URL_CAST_FROM_STRING
    QT_USE_QSTRINGBUILDER
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_include_directories(vorna_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
# From Qt 6.5 on, QTRY_COMPARE and its like convert milliseconds to int in the test that uses them.
set(VORNA_CONVERSION -Wconversion)
if(Qt6_VERSION VERSION_GREATER_EQUAL 6.5)
    set(VORNA_CONVERSION $<$<NOT:$<BOOL:$<TARGET_PROPERTY:VORNA_QT_TEST>>>:-Wconversion>)
endif()
target_compile_options(vorna_options INTERFACE -Wall -Wextra -Wpedantic ${VORNA_CONVERSION} -Wshadow
    -Wnon-virtual-dtor)

# Another release's compiler may warn of what these do not; whoever builds there is not to be held up by it. Nor on a Mac,
# whose headers differ from one release of Xcode to the next.
set(VORNA_WERROR OFF CACHE STRING "Warnings are errors: ON, OFF, or CHOSEN for ON in CI and with the compilers we chose")
set(VORNA_CHOSEN_COMPILERS "GNU 12" "Clang 19")
string(REGEX MATCH "^[0-9]+" VORNA_COMPILER_MAJOR "${CMAKE_CXX_COMPILER_VERSION}")
if(VORNA_WERROR STREQUAL "CHOSEN")
    if(DEFINED ENV{CI} OR "${CMAKE_CXX_COMPILER_ID} ${VORNA_COMPILER_MAJOR}" IN_LIST VORNA_CHOSEN_COMPILERS)
        set(VORNA_WARNINGS_ARE_ERRORS ON)
    endif()
elseif(VORNA_WERROR)
    set(VORNA_WARNINGS_ARE_ERRORS ON)
endif()
if(VORNA_WARNINGS_ARE_ERRORS AND NOT CMAKE_CXX_COMPILER_ID STREQUAL AppleClang)
    target_compile_options(vorna_options INTERFACE -Werror)
endif()

# A release is hardened as Debian's own packages are, and says nothing of where it was built.
include(CheckCXXCompilerFlag)
set(VORNA_RELEASE $<NOT:$<CONFIG:Debug>>)
target_compile_options(vorna_options INTERFACE "$<${VORNA_RELEASE}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
if(NOT APPLE)
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    target_compile_options(vorna_options INTERFACE
        "$<${VORNA_RELEASE}:-fstack-protector-strong;-fstack-clash-protection;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"
        -Wformat -Werror=format-security)
    foreach(FLAG -fcf-protection -mbranch-protection=standard) # as the processor has it
        string(MAKE_C_IDENTIFIER "VORNA_HAS${FLAG}" HAS_FLAG)
        check_cxx_compiler_flag(${FLAG} ${HAS_FLAG})
        if(${HAS_FLAG})
            target_compile_options(vorna_options INTERFACE $<${VORNA_RELEASE}:${FLAG}>)
        endif()
    endforeach()
    target_link_options(vorna_options INTERFACE "$<${VORNA_RELEASE}:LINKER:-z,relro;LINKER:-z,now>")
endif()

set(VORNA_SANITIZE "" CACHE STRING "Sanitizers, such as address,undefined")
if(VORNA_SANITIZE)
    target_compile_definitions(vorna_options INTERFACE _GLIBCXX_ASSERTIONS)
    target_compile_options(vorna_options INTERFACE -fsanitize=${VORNA_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    target_link_options(vorna_options INTERFACE -fsanitize=${VORNA_SANITIZE})
endif()

# For every test; nothing but the sanitizers reads it. Not strict_string_checks: libxkbcommon-x11, which is not ours,
# copies from replies that do not end with a zero. The slow unwinder sees past Qt's frames, so that tests/leaks.supp can
# name one function.
set(VORNA_SANITIZER_ENVIRONMENT
    "ASAN_OPTIONS=set:detect_stack_use_after_return=1:check_initialization_order=1:fast_unwind_on_malloc=0"
    "LSAN_OPTIONS=set:suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp:print_suppressions=0"
    "UBSAN_OPTIONS=set:print_stacktrace=1:halt_on_error=1")

# vorna_library(NAME SOURCES … LINKS …): one library of the house, static unless BUILD_SHARED_LIBS; LINKS are its arrows,
# all of them.
function(vorna_library NAME)
    cmake_parse_arguments(LIBRARY "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${NAME} ${LIBRARY_SOURCES})
    target_link_libraries(${NAME} PUBLIC vorna_options ${LIBRARY_LINKS})
    vorna_record_target(${NAME})
endfunction()

# Writes what a target is made of and what it links, for the test of the include lines.
function(vorna_record_target NAME)
    set(PROPERTIES "$<TARGET_PROPERTY:${NAME},SOURCES>\n$<TARGET_PROPERTY:${NAME},LINK_LIBRARIES>\n")
    file(GENERATE OUTPUT "${PROJECT_BINARY_DIR}/targets/${NAME}.txt" CONTENT "${PROPERTIES}")
endfunction()

# Sanitizers make a program several times as slow.
function(vorna_scale_timeout VARIABLE)
    if(VORNA_SANITIZE)
        math(EXPR ${VARIABLE} "5 * ${${VARIABLE}}")
        set(${VARIABLE} ${${VARIABLE}} PARENT_SCOPE)
    endif()
endfunction()

# vorna_test(FOLDER/TestX LINKS …): one Qt Test program for one class. Its label is `unit`: it needs neither a display nor a
# program that is not ours; another LABEL says what it needs.
function(vorna_test PATH)
    cmake_parse_arguments(TEST "" "PLATFORM;TIMEOUT;LABEL" "LINKS;SOURCES" ${ARGN})
    get_filename_component(NAME ${PATH} NAME)
    add_executable(${NAME} ${PATH}.cpp ${TEST_SOURCES})
    target_link_libraries(${NAME} PRIVATE ${TEST_LINKS} Qt6::Test)
    target_include_directories(${NAME} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    set_target_properties(${NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests" VORNA_QT_TEST ON)
    add_test(NAME ${NAME} COMMAND ${NAME})
    if(NOT TEST_PLATFORM)
        set(TEST_PLATFORM offscreen)
    endif()
    if(NOT TEST_TIMEOUT)
        set(TEST_TIMEOUT 120)
    endif()
    if(NOT TEST_LABEL)
        set(TEST_LABEL unit)
    endif()
    vorna_scale_timeout(TEST_TIMEOUT)
    set_tests_properties(${NAME} PROPERTIES
        LABELS ${TEST_LABEL}
        ENVIRONMENT "QT_QPA_PLATFORM=${TEST_PLATFORM};LC_ALL=C.UTF-8"
        ENVIRONMENT_MODIFICATION "${VORNA_SANITIZER_ENVIRONMENT}"
        TIMEOUT ${TEST_TIMEOUT}
        SKIP_REGULAR_EXPRESSION "^SKIPPED:")
endfunction()

# vorna_python_test(NAME FILE): a unittest program, run by the Python that has the development packages. A program in
# which every test was skipped counts as skipped.
find_program(VORNA_PYTHON python3 NO_DEFAULT_PATH PATHS "${PROJECT_SOURCE_DIR}/build/python/bin" /usr/bin REQUIRED)
function(vorna_python_test NAME FILE)
    cmake_parse_arguments(TEST "" "TIMEOUT" "" ${ARGN})
    if(NOT TEST_TIMEOUT)
        set(TEST_TIMEOUT 120)
    endif()
    vorna_scale_timeout(TEST_TIMEOUT)
    add_test(NAME ${NAME}
        COMMAND ${VORNA_PYTHON} -B -m unittest -v ${FILE}
        WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
    set_tests_properties(${NAME} PROPERTIES
        TIMEOUT ${TEST_TIMEOUT}
        ENVIRONMENT_MODIFICATION "${VORNA_SANITIZER_ENVIRONMENT}"
        SKIP_REGULAR_EXPRESSION "Ran 0 tests in [0-9.]+s\n\n[A-Z ]+\\(skipped=")
endfunction()
