# Warnings for all of our own code, sanitizers where asked, and a compiler cache where there is one.
add_compile_options(-Wall -Wextra)

# A broken rule stops where it is broken, in builds for finding out (debug, asan, fuzz).
add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

if(VANTORA_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=address,undefined)
endif()

# What a library needs is to be named when it is linked; but clang's sanitizers are in the program.
set(VANTORA_NO_UNDEFINED -Wl,--no-undefined)
if(VANTORA_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    set(VANTORA_NO_UNDEFINED)
endif()

if(VANTORA_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# vantora_precompile(TARGET HEADER...): headers of others that most of a target's sources include,
# parsed once. Each source names what it uses all the same; VANTORA_PRECOMPILE=OFF shows that it does.
option(VANTORA_PRECOMPILE "Parse headers of libraries once for a whole target" ON)
function(vantora_precompile target)
    if(VANTORA_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# vantora_unity(TARGET): compiles a target's sources eight at a time, which parses what they include
# and instantiates templates once for the eight. Where names of two sources would meet, one is called
# by a better name, or is left out by SKIP_UNITY_BUILD_INCLUSION. Without it, as in the preset debug,
# each source shows that it names what it uses.
option(VANTORA_UNITY "Compile the sources of a target in groups" ON)
function(vantora_unity target)
    if(VANTORA_UNITY)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    endif()
endfunction()

# The cache knows precompiled headers only where the compiler tells which one it read.
find_program(VANTORA_CCACHE ccache)
mark_as_advanced(VANTORA_CCACHE)
if(VANTORA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${VANTORA_CCACHE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        add_compile_options(-fpch-preprocess)
    else()
        add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
    endif()
endif()
