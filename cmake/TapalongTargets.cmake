# One way to declare our own targets, so that each has the same warnings, checks and floating-point rules.

include(CheckCXXCompilerFlag)

# Doubles are added and multiplied as written: a fused multiply-add would make mid grey lighter than 0.5.
set(TAPALONG_COMPILE_OPTIONS -Wall -Wextra -Wconversion -Wshadow -Werror -ffp-contract=off)
if(TAPALONG_HARDENED)
    list(APPEND TAPALONG_COMPILE_OPTIONS
         -fstack-protector-strong -fstack-clash-protection -Wformat -Werror=format-security)
    # Of x86 alone; elsewhere it is an error.
    check_cxx_compiler_flag(-fcf-protection TAPALONG_HAS_CF_PROTECTION)
    if(TAPALONG_HAS_CF_PROTECTION)
        list(APPEND TAPALONG_COMPILE_OPTIONS -fcf-protection)
    endif()
    add_compile_definitions($<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2> _GLIBCXX_ASSERTIONS)
    add_link_options(-Wl,-z,relro,-z,now)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
if(TAPALONG_SANITIZE)
    add_compile_options(-fsanitize=${TAPALONG_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TAPALONG_SANITIZE})
endif()
if(TAPALONG_COVERAGE)
    # In all targets: of an inline function that both the core and a test hold, the linker keeps either copy.
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

function(tapalong_configure target)
    target_include_directories(${target} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    target_compile_options(${target} PRIVATE ${TAPALONG_COMPILE_OPTIONS})
endfunction()

# tapalong_library(NAME source...): one layer.
function(tapalong_library target)
    add_library(${target} STATIC ${ARGN})
    tapalong_configure(${target})
endfunction()

# tapalong_test(NAME LIBRARIES lib... SOURCES file...): one GoogleTest program, each of its cases a CTest test.
function(tapalong_test target)
    cmake_parse_arguments(arg "" "" "LIBRARIES;SOURCES" ${ARGN})
    add_executable(${target} ${arg_SOURCES})
    tapalong_configure(${target})
    target_link_libraries(${target} PRIVATE ${arg_LIBRARIES} GTest::gtest_main)
    if(TAPALONG_COVERAGE)
        target_sources(${target} PRIVATE "${CMAKE_SOURCE_DIR}/tests/coverage/DumpCountersOnAbort.cpp")
    endif()
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60)
endfunction()
