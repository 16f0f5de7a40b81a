# Compiler settings that every target shares, and the shorthand for the tree's folders.

add_library(korvex_settings INTERFACE)
target_compile_options(korvex_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wno-sign-conversion -fno-omit-frame-pointer)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(korvex_settings INTERFACE -fpch-preprocess) # lets ccache see into precompiled headers
endif()
if(KORVEX_SANITIZE OR KORVEX_FUZZ)
    target_compile_options(korvex_settings INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined)
    target_link_options(korvex_settings INTERFACE -fsanitize=address,undefined)
endif()
if(KORVEX_COVERAGE)
    target_compile_options(korvex_settings INTERFACE --coverage)
    target_link_options(korvex_settings INTERFACE --coverage)
endif()

# One floor of the host: all sources below the folder, as objects of the host library.
function(korvex_host_floor name)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp
         ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
    file(GLOB resources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.qrc)
    add_library(korvex_${name} OBJECT ${sources} ${resources})
    set_target_properties(korvex_${name} PROPERTIES AUTORCC ON)
    target_include_directories(korvex_${name} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/sdk)
    target_compile_definitions(korvex_${name} PUBLIC KORVEX_HOST_BUILD)
    target_link_libraries(korvex_${name} PUBLIC korvex_settings ${ARGN})
    target_precompile_headers(korvex_${name} PRIVATE <algorithm> <functional> <map> <memory> <string>
        <unordered_map> <vector>)
endfunction()

# One test program: all sources below the folder.
function(korvex_test_executable folder)
    string(REPLACE "/" "_" name ${folder})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    if(NOT sources)
        return()
    endif()
    add_executable(${name}_test ${sources})
    target_link_libraries(${name}_test PRIVATE korvexhost korvex_settings GTest::gtest GTest::gtest_main Qt5::Test ${ARGN})
    target_compile_definitions(${name}_test PRIVATE
        KORVEX_SOURCE_DIR="${PROJECT_SOURCE_DIR}" KORVEX_BINARY_DIR="${PROJECT_BINARY_DIR}")
    target_precompile_headers(${name}_test PRIVATE <gtest/gtest.h> <memory> <string> <vector>)
endfunction()

# The same, as one ctest case.
function(korvex_test_program folder)
    korvex_test_executable(${folder})
    string(REPLACE "/" "_" name ${folder})
    if(NOT TARGET ${name}_test)
        return()
    endif()
    add_test(NAME ${name} COMMAND ${name}_test)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 900)
endfunction()
