# The staged tree: laid out like an installation, so that the program runs from the build directory unchanged.

set(VARNEL_STAGE "${CMAKE_BINARY_DIR}/stage")
add_custom_target(varnel_stage ALL)

# Copies one file into the staged tree whenever it changes.
function(varnel_stage_file source staged)
    set(target "${VARNEL_STAGE}/${staged}")
    add_custom_command(OUTPUT "${target}"
        COMMAND ${CMAKE_COMMAND} -E copy "${source}" "${target}"
        DEPENDS "${source}" VERBATIM)
    set_property(GLOBAL APPEND PROPERTY VARNEL_STAGED_FILES "${target}")
endfunction()

# Copies a folder of product files into the staged tree under its own name.
function(varnel_stage_directory folder)
    file(MAKE_DIRECTORY "${VARNEL_STAGE}/${folder}")
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/${folder}/*")
    list(FILTER files EXCLUDE REGEX "(CMakeLists.txt|__pycache__/|\\.keep$)")
    foreach(file IN LISTS files)
        varnel_stage_file("${PROJECT_SOURCE_DIR}/${file}" "${file}")
    endforeach()
endfunction()

# Ties all staged files to the default target; called when every folder has been read.
function(varnel_finish_stage)
    get_property(files GLOBAL PROPERTY VARNEL_STAGED_FILES)
    add_custom_target(varnel_staged_files DEPENDS ${files})
    add_dependencies(varnel_stage varnel_staged_files)
endfunction()
cmake_language(DEFER DIRECTORY "${PROJECT_SOURCE_DIR}" CALL varnel_finish_stage)

file(MAKE_DIRECTORY "${VARNEL_STAGE}/bin" "${VARNEL_STAGE}/plugins")
install(DIRECTORY "${VARNEL_STAGE}/" DESTINATION . USE_SOURCE_PERMISSIONS)
