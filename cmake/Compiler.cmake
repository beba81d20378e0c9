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
