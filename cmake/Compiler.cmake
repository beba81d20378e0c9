# Warnings for all of our own code, sanitizers where asked, and a compiler cache where there is one.
add_compile_options(-Wall -Wextra)

# A broken rule stops where it is broken, in builds for finding out (debug, asan, fuzz).
add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

if(VANTORA_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=address,undefined)
endif()

if(VANTORA_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

find_program(VANTORA_CCACHE ccache)
mark_as_advanced(VANTORA_CCACHE)
if(VANTORA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${VANTORA_CCACHE})
endif()
