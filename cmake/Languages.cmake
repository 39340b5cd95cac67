# The files of TernCoreKit/guidance/languages/ as a C++ source, so that the library reads no files: one
# constant text each. A file that changes has the source made anew.

function(tern_embed_languages output)
  file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/TernCoreKit/guidance/languages/*.json)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
  set(TERN_LANGUAGE_FILES)
  foreach(name IN LISTS files)
    file(READ ${name} text)
    string(APPEND TERN_LANGUAGE_FILES "R\"json(${text})json\",\n")
  endforeach()
  configure_file(${PROJECT_SOURCE_DIR}/cmake/Languages.cpp.in ${output} @ONLY)
endfunction()
