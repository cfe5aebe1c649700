# What all targets have in common: language, warnings, sanitizers, where finished artifacts go, how tests are made.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_C_FLAGS_RELEASE "-O2 -DNDEBUG")
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

option(LUMBRIX_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
set(LUMBRIX_OUTPUT ${CMAKE_BINARY_DIR}/artifacts CACHE PATH "Where the finished programs and libraries go")

# The program is one of 32 bits. For 64 there are the libraries and the command line.
set(LUMBRIX_PROGRAM OFF)
if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(LUMBRIX_PROGRAM ON)
endif()

find_package(Threads REQUIRED)

add_library(lumbrix_options INTERFACE)
target_include_directories(lumbrix_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(lumbrix_options INTERFACE
    -Wall -Wextra -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor> -Werror
    # Designated initialisers name what matters; every other member has its default beside its declaration.
    -Wno-missing-field-initializers
    # GCC 12 sees overlaps inside its own std::string.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
if(WIN32)
    # One self-contained file per artifact, and the same floating point as everywhere else.
    target_compile_definitions(lumbrix_options INTERFACE WINVER=0x0601 _WIN32_WINNT=0x0601 NOMINMAX WIN32_LEAN_AND_MEAN)
    target_compile_options(lumbrix_options INTERFACE -msse2 -mfpmath=sse -mstackrealign)
    target_link_options(lumbrix_options INTERFACE -static -static-libgcc -static-libstdc++ $<$<CONFIG:Release>:-s>
        # The same sources make the same bytes.
        LINKER:--no-insert-timestamp)
endif()

# Everything, third-party test code included, is built with the sanitizers or nothing is.
set(LUMBRIX_SANITIZERS address,undefined CACHE STRING "The sanitizers that LUMBRIX_SANITIZE builds with")
if(LUMBRIX_SANITIZE)
    add_compile_options(-fsanitize=${LUMBRIX_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    if(LUMBRIX_SANITIZERS STREQUAL thread AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        add_compile_options(-Wno-tsan) # which says that the sanitizer takes no notice of fences
    endif()
    add_link_options(-fsanitize=${LUMBRIX_SANITIZERS})
endif()
option(LUMBRIX_FUZZ "Tell a fuzzer which ways through the code an input takes; for Clang" OFF)
if(LUMBRIX_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
option(LUMBRIX_COVERAGE "Count how often each line is run; for Clang" OFF)
if(LUMBRIX_COVERAGE)
    add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
    add_link_options(-fprofile-instr-generate)
endif()

# Reading the standard library takes longer than compiling most sources. Where this is on, libraries of many files read it
# once. The builds for packages and for fuzzers read every file on its own, so that a forgotten include shows.
option(LUMBRIX_PRECOMPILE "Read the headers of the standard library once" OFF)
set(LUMBRIX_STANDARD_HEADERS <algorithm> <array> <cmath> <cstring> <filesystem> <functional> <map> <memory> <mutex>
    <optional> <span> <string> <string_view> <vector>)
function(lumbrix_precompile)
    if(NOT LUMBRIX_PRECOMPILE)
        return()
    endif()
    if(NOT TARGET lumbrix_standard_headers)
        file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/standardheaders.cpp CONTENT "")
        add_library(lumbrix_standard_headers OBJECT ${CMAKE_BINARY_DIR}/standardheaders.cpp)
        target_link_libraries(lumbrix_standard_headers PRIVATE lumbrix_options)
        target_precompile_headers(lumbrix_standard_headers PRIVATE ${LUMBRIX_STANDARD_HEADERS})
    endif()
    foreach(target IN LISTS ARGN)
        target_precompile_headers(${target} REUSE_FROM lumbrix_standard_headers)
        # GCC 12 forgets that precompiled headers are the system's, and suspects its own strings and vectors in them.
        target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
    endforeach()
endfunction()

# Puts a finished artifact where people look for it.
function(lumbrix_ship target)
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${LUMBRIX_OUTPUT}
        LIBRARY_OUTPUT_DIRECTORY ${LUMBRIX_OUTPUT}
        ARCHIVE_OUTPUT_DIRECTORY ${LUMBRIX_OUTPUT})
    lumbrix_finish_link(${target})
endfunction()

# On Windows others' libraries become part of a finished artifact; the linker writes down which did. Where a library likes
# to be loaded would follow from where it was built, so it is told, for each its own place.
function(lumbrix_finish_link target)
    if(WIN32)
        set(folder ${CMAKE_BINARY_DIR}/linked)
        file(MAKE_DIRECTORY ${folder})
        target_link_options(${target} PRIVATE LINKER:-Map=${folder}/${target}.map)
        get_target_property(kind ${target} TYPE)
        if(kind STREQUAL SHARED_LIBRARY)
            string(MD5 digits ${target})
            string(SUBSTRING ${digits} 0 3 digits)
            target_link_options(${target} PRIVATE LINKER:--image-base=0x6${digits}0000)
        endif()
    endif()
endfunction()

# Tells Windows what a finished program or library is, in its file: lumbrix_describe(lumbrix-cli "Works on image files")
function(lumbrix_describe target description)
    if(WIN32)
        get_target_property(kind ${target} TYPE)
        get_target_property(name ${target} OUTPUT_NAME)
        if(NOT name)
            set(name ${target})
        endif()
        if(kind STREQUAL EXECUTABLE)
            set(type VFT_APP)
            set(file ${name}.exe)
        else()
            set(type VFT_DLL)
            set(file ${name}.dll)
        endif()
        set(record ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
        configure_file(${CMAKE_SOURCE_DIR}/cmake/version.rc.in ${record} @ONLY)
        target_sources(${target} PRIVATE ${record})
    endif()
endfunction()

# For the leak checker of tests under the sanitizers. It breaks down now and then over the thread-local memory of
# libraries that are loaded at run time, so it leaves that out; nothing of ours is held there alone.
set(LUMBRIX_LEAK_OPTIONS
    "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0:use_tls=0")

# A test program on googletest. LABELS names the tiers it belongs to.
#   lumbrix_test(NAME platform_test SOURCES … LIBRARIES …)
# DESKTOP is for one that opens windows: on which of the two virtual desktops. Those on one of them run one after the
# other, the first of all tests, for they take longest and mostly wait; so both should have as much to do.
# Natively every case is a test of its own. A Windows or a sanitized program is one test, for starting Wine, or looking for
# leaks at the end of a process, costs more than a case.
function(lumbrix_test)
    cmake_parse_arguments(TEST "" "NAME;DESKTOP" "SOURCES;LIBRARIES;ENVIRONMENT;LABELS" ${ARGN})
    add_executable(${TEST_NAME} ${TEST_SOURCES})
    target_link_libraries(${TEST_NAME} PRIVATE lumbrix_options ${TEST_LIBRARIES} GTest::gtest_main)
    # Tests run in no time and are built three times over. What they do themselves is defined; checking that as well
    # would take a third longer to compile.
    target_compile_options(${TEST_NAME} PRIVATE -O0
        $<$<AND:$<BOOL:${LUMBRIX_SANITIZE}>,$<CXX_COMPILER_ID:GNU>>:-fno-sanitize=undefined>)
    # Several files are compiled as one, for what they share takes most of the time. So the helpers of the test files of one
    # program need different names.
    set_target_properties(${TEST_NAME} PROPERTIES UNITY_BUILD ON)
    # Reading googletest takes longer than most tests take to compile, so the first program reads it for all.
    if(TEST_NAME STREQUAL platform_test)
        target_precompile_headers(${TEST_NAME} PRIVATE <gtest/gtest.h> ${LUMBRIX_STANDARD_HEADERS})
    else()
        target_precompile_headers(${TEST_NAME} REUSE_FROM platform_test)
    endif()
    # Each test on a desktop has a limit of its own. This one is for what hangs, also on a machine that does other work.
    set(properties LABELS "${TEST_LABELS}" TIMEOUT 600)
    if(WIN32)
        set(runner wine-run)
        if(TEST_DESKTOP)
            set(runner wine-desktop)
            list(APPEND properties RESOURCE_LOCK desktop_${TEST_DESKTOP} COST 1000)
            list(APPEND TEST_ENVIRONMENT LUMBRIX_DESKTOP=${TEST_DESKTOP})
        endif()
        add_test(NAME ${TEST_NAME} COMMAND ${CMAKE_SOURCE_DIR}/tools/${runner} $<TARGET_FILE:${TEST_NAME}>)
        set_tests_properties(${TEST_NAME} PROPERTIES ${properties} ENVIRONMENT "${TEST_ENVIRONMENT}")
    elseif(LUMBRIX_SANITIZE)
        add_test(NAME ${TEST_NAME}_sanitized COMMAND ${TEST_NAME})
        set_tests_properties(${TEST_NAME}_sanitized PROPERTIES ${properties}
            ENVIRONMENT "${TEST_ENVIRONMENT};${LUMBRIX_LEAK_OPTIONS}")
    else()
        include(GoogleTest)
        gtest_discover_tests(${TEST_NAME} TEST_PREFIX ${TEST_NAME}. DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES
            PROPERTIES ${properties} ENVIRONMENT "${TEST_ENVIRONMENT}")
    endif()
endfunction()

# For a test program that meets the finished libraries by name: on Windows they must lie beside it.
function(lumbrix_beside_libraries target)
    add_dependencies(${target} lumbrix lumbrix_imaging_library)
    if(WIN32)
        set(folder ${LUMBRIX_OUTPUT}-tests)
        set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${folder})
        # They are copied whenever they have changed, also where no test has.
        if(NOT TARGET lumbrix_libraries_beside_tests)
            set(stamp ${CMAKE_BINARY_DIR}/libraries_beside_tests.stamp)
            add_custom_command(OUTPUT ${stamp} DEPENDS lumbrix lumbrix_imaging_library VERBATIM
                COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
                COMMAND ${CMAKE_COMMAND} -E copy_if_different
                    $<TARGET_FILE:lumbrix> $<TARGET_FILE:lumbrix_imaging_library> ${folder}
                COMMAND ${CMAKE_COMMAND} -E touch ${stamp})
            add_custom_target(lumbrix_libraries_beside_tests DEPENDS ${stamp})
        endif()
        add_dependencies(${target} lumbrix_libraries_beside_tests)
    endif()
endfunction()
