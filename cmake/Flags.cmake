# The flags that every target of the project is built with: link tarnwick_flags.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# Programs too, whatever the compiler links by default.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# A library's calls of its own functions go to these, without a look-up by their names at run time:
# nobody puts others in their place.
add_compile_options(-fno-semantic-interposition)
set(TARNWICK_BOUND_TO_ITSELF LINKER:-Bsymbolic-functions)

add_library(tarnwick_flags INTERFACE)
target_include_directories(tarnwick_flags INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(tarnwick_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow
    -Wnon-virtual-dtor -Woverloaded-virtual)
# GCC 12 sees overlaps in the library's own string concatenation where there are none.
target_compile_options(tarnwick_flags INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# What is unnamed in one file is seen by the others of its batch.
set(in_batches $<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>)
target_compile_options(tarnwick_flags INTERFACE
    $<$<AND:$<CXX_COMPILER_ID:GNU>,${in_batches}>:-Wno-subobject-linkage>
    $<$<AND:$<CXX_COMPILER_ID:Clang>,${in_batches}>:-Wno-shadow>)
if(TARNWICK_WERROR)
    target_compile_options(tarnwick_flags INTERFACE -Werror)
endif()
# Which sanitizers a target is compiled with, where any are: the variable when it is made.
define_property(TARGET PROPERTY TARNWICK_SANITIZERS INITIALIZE_FROM_VARIABLE TARNWICK_SANITIZERS)
set(TARNWICK_SANITIZERS address,undefined)
if(TARNWICK_SANITIZE)
    target_compile_options(tarnwick_flags INTERFACE
        -fsanitize=$<TARGET_PROPERTY:TARNWICK_SANITIZERS> -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    target_link_options(tarnwick_flags INTERFACE -fsanitize=address,undefined)
endif()
if(TARNWICK_FUZZ)
    target_compile_options(tarnwick_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
