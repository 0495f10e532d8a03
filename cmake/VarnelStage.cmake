# The staged tree has the layout of an installation, so that the program can run from the build directory.

set(VARNEL_STAGE "${CMAKE_BINARY_DIR}/stage")
add_custom_target(varnel_staged_files) # files that are copied or generated
add_custom_target(varnel_stage ALL)    # these and compiled targets
add_dependencies(varnel_stage varnel_staged_files)

# Copies one file into the staged tree whenever it changes.
function(varnel_stage_file source staged)
    set(target "${VARNEL_STAGE}/${staged}")
    add_custom_command(OUTPUT "${target}"
        COMMAND ${CMAKE_COMMAND} -E copy "${source}" "${target}"
        DEPENDS "${source}" VERBATIM)
    varnel_stage_output("${target}")
endfunction()

# Adds a file that a custom command of this folder creates in the staged tree to the default target.
function(varnel_stage_output target)
    get_property(known DIRECTORY PROPERTY VARNEL_STAGED_FILES SET)
    if(NOT known)
        cmake_language(DEFER CALL varnel_finish_stage)
    endif()
    set_property(DIRECTORY APPEND PROPERTY VARNEL_STAGED_FILES "${target}")
endfunction()

# Copies a folder of product files into the staged tree under its own name, without the build file of that folder.
function(varnel_stage_directory folder)
    file(MAKE_DIRECTORY "${VARNEL_STAGE}/${folder}")
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/${folder}/*")
    list(FILTER files EXCLUDE REGEX "(^${folder}/CMakeLists\\.txt$|__pycache__/|\\.keep$)")
    foreach(file IN LISTS files)
        varnel_stage_file("${PROJECT_SOURCE_DIR}/${file}" "${file}")
    endforeach()
endfunction()

# Creates one target for the staged files of this folder; called at the end of the folder.
function(varnel_finish_stage)
    get_property(files DIRECTORY PROPERTY VARNEL_STAGED_FILES)
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    string(MAKE_C_IDENTIFIER "varnel_stage_files_${folder}" target)
    add_custom_target(${target} DEPENDS ${files})
    add_dependencies(varnel_staged_files ${target})
endfunction()

# The commit, which the about box shows. It is written again only when it changes.
add_custom_target(varnel_commit
    COMMAND ${CMAKE_COMMAND} "-DSOURCE=${PROJECT_SOURCE_DIR}" "-DTARGET=${VARNEL_STAGE}/data/commit"
        -P "${CMAKE_CURRENT_LIST_DIR}/commit.cmake"
    VERBATIM)
add_dependencies(varnel_staged_files varnel_commit)

file(MAKE_DIRECTORY "${VARNEL_STAGE}/bin" "${VARNEL_STAGE}/plugins")
install(DIRECTORY "${VARNEL_STAGE}/" DESTINATION . USE_SOURCE_PERMISSIONS)
