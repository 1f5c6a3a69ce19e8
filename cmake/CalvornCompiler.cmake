# SPDX-License-Identifier: MIT
# Compiler settings for all targets of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

set(CALVORN_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")

# Optimisation and hardening are up to the builder: CMAKE_BUILD_TYPE, CMAKE_CXX_FLAGS and the environment.
option(CALVORN_WERROR "Make every warning an error (the presets take it from the environment)" OFF)

add_library(calvorn_compiler INTERFACE)
target_compile_options(calvorn_compiler INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wimplicit-fallthrough -Wcast-align $<$<BOOL:${CALVORN_WERROR}>:-Werror>)
target_compile_definitions(calvorn_compiler INTERFACE QT_NO_FOREACH)
target_include_directories(calvorn_compiler INTERFACE "${CMAKE_SOURCE_DIR}")
if(CALVORN_SANITIZE)
    # Each sanitizer finding terminates the program like a crash.
    add_compile_options(-fsanitize=${CALVORN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${CALVORN_SANITIZE})
endif()

# Compiling a test takes longer than running it, so the tests are hardly optimised. Clang compiles them much faster
# without any optimisation; GCC does not.
add_library(calvorn_tests INTERFACE)
target_compile_options(calvorn_tests INTERFACE $<$<NOT:$<CONFIG:Debug>>:$<IF:$<CXX_COMPILER_ID:GNU>,-O1,-O0>>)

# Counts executed lines. Optimisation is off so that lines are not merged; counting is atomic because of server threads.
add_library(calvorn_counting INTERFACE)
target_compile_options(calvorn_counting INTERFACE "$<$<CONFIG:Coverage>:-O0;--coverage;-fprofile-update=atomic>")
target_link_options(calvorn_counting INTERFACE "$<$<CONFIG:Coverage>:--coverage>")

# Fuzzing needs coverage instrumentation; the preset adds the sanitizers. The whole program is instrumented, so that its
# precompiled headers can be shared.
if(CALVORN_BUILD_FUZZERS)
    target_compile_options(calvorn_counting INTERFACE -fsanitize=fuzzer-no-link)
endif()
