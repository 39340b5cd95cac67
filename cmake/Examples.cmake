# The programs in examples/, each complete by itself.

file(GLOB tern_example_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*.cpp ${PROJECT_SOURCE_DIR}/examples/*.c)
add_custom_target(tern_examples)
foreach(source IN LISTS tern_example_sources)
  cmake_path(GET source STEM name)
  add_executable(tern_example_${name} EXCLUDE_FROM_ALL ${source})
  tern_own_target(tern_example_${name})
  set_target_properties(tern_example_${name} PROPERTIES C_STANDARD 11 C_EXTENSIONS OFF
    OUTPUT_NAME ${name} RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)
  target_link_libraries(tern_example_${name} PRIVATE TernCoreKit::TernCoreKit)
  add_dependencies(tern_examples tern_example_${name})
endforeach()
