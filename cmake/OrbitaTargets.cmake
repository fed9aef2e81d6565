# What every target of ours is compiled with, and the two shapes a folder can have.

add_library(orbita_options INTERFACE)
target_compile_options(orbita_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
    $<$<CXX_COMPILER_ID:Clang>:-Wno-keyword-macro>) # a header of XKB names a field like a keyword
target_compile_definitions(orbita_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400 ORBITA_VERSION="${PROJECT_VERSION}")
if(ORBITA_SANITIZE)
    target_compile_options(orbita_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(orbita_options INTERFACE -fsanitize=address,undefined)
endif()

# orbita_add_library(NAME LINK <targets>): every source below the current folder as Orbita::NAME.
function(orbita_add_library name)
    cmake_parse_arguments(ARG "" "" "LINK;PRIVATE_LINK" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp *.h)
    add_library(orbita_${name} STATIC ${sources})
    add_library(Orbita::${name} ALIAS orbita_${name})
    target_include_directories(orbita_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(orbita_${name} PUBLIC ${ARG_LINK} PRIVATE orbita_options ${ARG_PRIVATE_LINK})
endfunction()

# orbita_add_test(NAME LINK <targets>): every source of the current folder as one GoogleTest program,
# each of its cases a test of its own. They run after the setup of FIXTURE, if one is named.
function(orbita_add_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT;FIXTURE" "LINK" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300)
    endif()
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    add_executable(test-${name} ${sources})
    target_link_libraries(test-${name} PRIVATE ${ARG_LINK} Orbita::support GTest::gmock orbita_options)
    # Optimised, the matchers of a test take twice as long to compile. What is tested is optimised all the same, but for
    # templates that both of them make.
    target_compile_options(test-${name} PRIVATE -O0 -U_FORTIFY_SOURCE)
    gtest_discover_tests(test-${name} TEST_PREFIX "${name}: " DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS "${name}" FIXTURES_REQUIRED "${ARG_FIXTURE}")
endfunction()
