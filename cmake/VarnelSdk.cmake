# The SDK for plug-ins: headers, a package for find_package(Varnel), guides, samples and the library for tests.

include(CMakePackageConfigHelpers)

# varnel_stage_headers(SOURCE FOLDER NAMES...): copies headers of source/SOURCE into include/FOLDER.
function(varnel_stage_headers source folder)
    foreach(header IN LISTS ARGN)
        varnel_stage_file("${PROJECT_SOURCE_DIR}/source/${source}/${header}" "include/${folder}/${header}")
    endforeach()
endfunction()

file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}/source/interfaces" "${PROJECT_SOURCE_DIR}/source/interfaces/*.h")
varnel_stage_headers(interfaces varnel ${headers})
# The base classes of languages and document types, and the headers that they include.
varnel_stage_headers(base varnel/editor wholefile.h)
varnel_stage_headers(widgets varnel/editor pasteguard.h)
varnel_stage_headers(workspace varnel/editor
    baseindent.h bracketmatcher.h cpphighlighter.h cppindent.h document.h documenttemplate.h editorcolours.h editorhost.h editorversion.h longline.h longlineedit.h markedlines.h
    panebackground.h panenumbers.h paragdata.h pythonhighlighter.h pythonindent.h standins.h syntaxhighlighter.h tablehighlighter.h textdocument.h
    textdocumenttemplate.h textfile.h textindent.h textpattern.h textsearch.h textview.h textviewedit.h view.h viewinterfaces.h)

# What the manual refers to.
foreach(guide automation gdb gnubuild plugin-authors plugin-changes plugin-misbehaviour plugin-sequences property-definitions
        templates uiconfig)
    varnel_stage_file("${PROJECT_SOURCE_DIR}/docs/${guide}.md" "share/doc/varnel-sdk/${guide}.md")
endforeach()
file(GLOB_RECURSE samples CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/samples/*")
list(FILTER samples EXCLUDE REGEX "/build/|__pycache__/|~$")
foreach(sample IN LISTS samples)
    varnel_stage_file("${PROJECT_SOURCE_DIR}/${sample}" "share/doc/varnel-sdk/${sample}")
endforeach()
file(GLOB modules CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}/tests/gui" "${PROJECT_SOURCE_DIR}/tests/gui/driver/*.py")
foreach(module IN LISTS modules)
    varnel_stage_file("${PROJECT_SOURCE_DIR}/tests/gui/${module}" "share/varnel-sdk/${module}")
endforeach()

configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/VarnelConfig.cmake.in"
    "${VARNEL_STAGE}/lib/cmake/Varnel/VarnelConfig.cmake" INSTALL_DESTINATION lib/cmake/Varnel)
write_basic_package_version_file("${VARNEL_STAGE}/lib/cmake/Varnel/VarnelConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
