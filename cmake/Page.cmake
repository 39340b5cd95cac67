# A built page as part of a program: tern_embed_page(TARGET FOLDER) gives the target what
# tools/tern/EmbeddedPage.hpp declares. A folder without an index.html, or none (""), gives it no files.
# A file that changes, comes or goes has the source made anew.

function(tern_embed_page target folder)
  set(files)
  if(folder)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*)
    # They are for whoever debugs the page, and as large as all the rest.
    list(FILTER files EXCLUDE REGEX "\\.map$")
    list(SORT files)
    if(NOT index.html IN_LIST files)
      message(STATUS "${target} has no page: there is no ${folder}/index.html")
      set(files)
    endif()
  endif()
  set(dependencies ${files})
  list(TRANSFORM dependencies PREPEND ${folder}/)
  set(source ${PROJECT_BINARY_DIR}/pages/${target}.cpp)
  # The command holds the names, so that it differs when one of them is gone.
  list(JOIN files | names)
  add_custom_command(OUTPUT ${source}
    COMMAND ${CMAKE_COMMAND} -D folder=${folder} -D names=${names} -D output=${source}
            -P ${PROJECT_SOURCE_DIR}/cmake/EmbedPage.cmake
    DEPENDS ${dependencies} ${PROJECT_SOURCE_DIR}/cmake/EmbedPage.cmake
    COMMENT "Embedding the page of ${target}"
    VERBATIM)
  target_sources(${target} PRIVATE ${source})
  set_source_files_properties(${source} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON
    COMPILE_OPTIONS -Wno-overlength-strings)
endfunction()
