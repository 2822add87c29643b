# How every target of the project is built: language, warnings, sanitizers, and the two functions with which
# a folder becomes a library or a test program.

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

set(GLIMMERLY_SANITIZE "" CACHE STRING "Sanitizers to build with, as in -fsanitize=")

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(glimmerly_build_settings INTERFACE)
target_compile_options(glimmerly_build_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual $<$<CXX_COMPILER_ID:Clang>:-Wno-keyword-macro> -Werror)
target_compile_definitions(glimmerly_build_settings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)
target_include_directories(glimmerly_build_settings INTERFACE ${CMAKE_SOURCE_DIR})
if(GLIMMERLY_SANITIZE)
    target_compile_options(glimmerly_build_settings INTERFACE
        -fsanitize=${GLIMMERLY_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(glimmerly_build_settings INTERFACE -fsanitize=${GLIMMERLY_SANITIZE})
endif()

# glimmerly_library(NAME LINKS ...): the folder's own sources as a static library.
function(glimmerly_library name)
    cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    add_library(${name} STATIC ${sources})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE glimmerly_build_settings)
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
endfunction()

# glimmerly_test(NAME LINKS ... [ENVIRONMENT ...]): the folder's own sources as a test program whose cases
# CTest runs one by one, labelled with the folder below tests/.
function(glimmerly_test name)
    cmake_parse_arguments(ARG "" "" "LINKS;ENVIRONMENT" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} glimmerly_test_support GTest::gmock
        glimmerly_build_settings)
    include(GoogleTest)
    file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS ${folder} TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${ARG_ENVIRONMENT}")
endfunction()
