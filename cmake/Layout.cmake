# The build tree has the layout of an installation, so that the program finds its plug-ins and
# the PDF library by the same relative paths in both:
#
#   bin/vantora
#   lib/vantora/libVantoraApp.so
#   lib/vantora/vantora_gui.so
#   lib/vantora/vantora_verifier.so
#   lib/vantora/KarvelPDFLibraryCPDylib1311.dylib
#   lib/vantora/actions/libDeletePages.so
set(VANTORA_BINARY_DIR bin)
set(VANTORA_LIBRARY_DIR lib/vantora)
set(VANTORA_ACTION_DIR lib/vantora/actions)

# RUNPATHs are given explicitly per target: a bare library name handed to dlopen is searched
# through the RUNPATH of the object that calls it.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

# What is installed belongs to one of three components, which are three packages: Desktop, Development
# and, where nothing is said, Vantora.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME Vantora)

# Puts a target's output where the layout says, with a RUNPATH relative to itself.
function(vantora_place target)
    cmake_parse_arguments(ARG "" "DIRECTORY;COMPONENT" "RUNPATH" ${ARGN})
    if(NOT ARG_COMPONENT)
        set(ARG_COMPONENT ${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME})
    endif()
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${ARG_DIRECTORY}
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${ARG_DIRECTORY}
        INSTALL_RPATH "${ARG_RUNPATH}")
    install(TARGETS ${target}
        RUNTIME DESTINATION ${ARG_DIRECTORY} COMPONENT ${ARG_COMPONENT}
        LIBRARY DESTINATION ${ARG_DIRECTORY} COMPONENT ${ARG_COMPONENT})
endfunction()
