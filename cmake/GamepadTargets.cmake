# SPDX-License-Identifier: MIT
# How this project declares its targets: one call each, naming its files and what it links.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

find_program(GAMEPAD_CCACHE ccache)
if(GAMEPAD_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${GAMEPAD_CCACHE}")
endif()

# Settings that every target of this project, and nothing else, is built with.
add_library(gamepad-settings INTERFACE)
target_compile_definitions(gamepad-settings INTERFACE
    QT_NO_CAST_FROM_ASCII # every text says its encoding
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_KEYWORDS # "signals" and "slots" stay usable as names
    QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DISABLE_DEPRECATED_UP_TO=0x060900
    QT_NO_VERSION_TAGGING # the tag would demand the Qt that built the plugin, not the Qt that it needs
)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(gamepad-settings INTERFACE
        -Wall -Wextra
        -Wpedantic # no compiler extensions, so that every platform's compiler takes the code
        -Wshadow # a hidden name is a misread name
        -Wconversion # narrowing is written out, since numbers come from documents
        -Wdouble-promotion
        -Wold-style-cast
        -Wnon-virtual-dtor
        -Woverloaded-virtual
        -Wimplicit-fallthrough
        -Wextra-semi
    )
endif()
if(GAMEPAD_SANITIZED)
    target_compile_options(gamepad-settings INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
    target_link_options(gamepad-settings INTERFACE -fsanitize=address,undefined)
endif()

# Parsing Qt's headers is most of what compiling a small file costs, so a target parses the common ones once.
# "./dev lint" compiles without that, so that every file goes on including what it uses.
option(GAMEPAD_PRECOMPILED "Parse Qt's headers once for each target" ON)
if(GAMEPAD_PRECOMPILED)
    set(CMAKE_DISABLE_PRECOMPILE_HEADERS OFF)
else()
    set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

# What goes into the plugin is compiled against the oldest Qt that it serves, also where a newer one is there.
add_library(gamepad-oldestqt INTERFACE)
if(CMAKE_DISABLE_PRECOMPILE_HEADERS AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(gamepad-oldestqt INTERFACE
        "SHELL:-include \"${PROJECT_SOURCE_DIR}/cmake/oldestqt.h\"")
endif()

# gamepad_add_folder(NAME SOURCES file ... [LINKS target ...])
# One folder below src/: a static library whose only include directory is the folder itself, so that a
# header can be included only by who links the folder.
function(gamepad_add_folder name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>")
    target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE "$<BUILD_INTERFACE:gamepad-settings;gamepad-oldestqt>")
    # The header for the oldest Qt comes first in it, since whatever stands ahead of such a header voids it.
    target_precompile_headers(${name} PRIVATE
        "${PROJECT_SOURCE_DIR}/cmake/oldestqt.h" "${PROJECT_SOURCE_DIR}/cmake/qtheaders.h")
    if(GAMEPAD_SANITIZED)
        # Fuzzers are guided by the branches that the product takes; its tests are not what they explore.
        target_compile_options(${name} PRIVATE -O1 $<$<CXX_COMPILER_ID:Clang>:-fsanitize=fuzzer-no-link>)
    endif()
endfunction()

# gamepad_add_program(NAME SOURCES file ... [LINKS target ...])
function(gamepad_add_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} gamepad-settings)
endfunction()

# Optimising a test costs more than running it.
function(gamepad_compile_as_test name)
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU,Clang>:-O0>)
endfunction()

# Whether one of the headers among the files declares a class for moc.
function(gamepad_holds_objects result)
    set(${result} OFF PARENT_SCOPE)
    foreach(file IN LISTS ARGN)
        get_filename_component(path "${file}" ABSOLUTE)
        if(path MATCHES "\\.h$")
            file(STRINGS "${path}" found REGEX "Q_OBJECT" LIMIT_COUNT 1)
            if(found)
                set(${result} ON PARENT_SCOPE)
            endif()
        endif()
    endforeach()
endfunction()

# gamepad_add_test(NAME SOURCES file ... [LINKS target ...] [LABELS label ...] [WRAPPER command ...]
#                  [PLATFORM qpa] [ARGUMENTS arg ...] [TIMEOUT seconds])
# One Qt Test program. Qt is offscreen unless PLATFORM says otherwise; SFML finds a display by DISPLAY.
# The program's own symbols are exported, so that a scripted joystick serves a loaded plugin too.
function(gamepad_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "PLATFORM;TIMEOUT" "SOURCES;LINKS;LABELS;WRAPPER;ARGUMENTS")
    gamepad_add_program(${name} SOURCES ${arg_SOURCES} LINKS ${arg_LINKS} gamepad-testsupport Qt6::Test)
    set_target_properties(${name} PROPERTIES ENABLE_EXPORTS ON)
    gamepad_compile_as_test(${name})
    if(TARGET gamepad-testheaders)
        target_precompile_headers(${name} REUSE_FROM gamepad-testheaders)
        # A test's own file includes its own moc output, so what is left is empty without objects in headers.
        gamepad_holds_objects(objects ${arg_SOURCES})
        if(NOT objects)
            set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp"
                PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
        endif()
    endif()
    if(NOT arg_PLATFORM)
        set(arg_PLATFORM offscreen)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_test(NAME ${name} COMMAND ${arg_WRAPPER} $<TARGET_FILE:${name}> ${arg_ARGUMENTS})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${arg_TIMEOUT}
        LABELS "${arg_LABELS}"
        ENVIRONMENT "QT_QPA_PLATFORM=${arg_PLATFORM};${GAMEPAD_TEST_ENVIRONMENT}")
endfunction()

# Leaks inside the drivers and font caches of a desktop are not ours; leaks of this project's code are.
if(GAMEPAD_SANITIZED)
    set(GAMEPAD_TEST_ENVIRONMENT
        "ASAN_OPTIONS=detect_stack_use_after_return=1:verify_asan_link_order=0"
        "LSAN_OPTIONS=suppressions='${PROJECT_SOURCE_DIR}/tests/lsan.supp':print_suppressions=0"
        "UBSAN_OPTIONS=print_stacktrace=1")
endif()
