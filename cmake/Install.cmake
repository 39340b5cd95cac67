# Headers, library, CMake package, pkg-config file and the command with its manual and completions. Headers in a detail/ folder stay out, and no
# header outside one may include them (scripts/checks/file-includes).

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(tern_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TernCoreKit)

install(TARGETS TernCoreKit EXPORT TernCoreKitTargets
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(TARGET tern)
  install(TARGETS tern)
endif()
if(tern_said)
  install(FILES ${tern_said}/tern.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME tern)
  install(FILES ${tern_said}/_tern DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES ${tern_said}/tern.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
  install(FILES ${tern_said}/tern.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
install(DIRECTORY TernCoreKit DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.hpp" PATTERN "*.h" PATTERN "module.modulemap" PATTERN "detail" EXCLUDE)
install(FILES ${PROJECT_BINARY_DIR}/include/TernCoreKit/Version.hpp
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TernCoreKit)
install(EXPORT TernCoreKitTargets NAMESPACE TernCoreKit:: DESTINATION ${tern_package_dir})

# Whoever links the static library links libcurl and zlib with it; the shared one has it inside.
set(tern_links_curl OFF)
if(TERN_WITH_CURL AND NOT BUILD_SHARED_LIBS)
  set(tern_links_curl ON)
  set(tern_pc_requires "libcurl zlib")
endif()
configure_package_config_file(cmake/TernCoreKitConfig.cmake.in TernCoreKitConfig.cmake
  INSTALL_DESTINATION ${tern_package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(TernCoreKitConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/TernCoreKitConfig.cmake
    ${PROJECT_BINARY_DIR}/TernCoreKitConfigVersion.cmake
  DESTINATION ${tern_package_dir})

if(BUILD_SHARED_LIBS)
  set(tern_pc_cflags -DTERN_SHARED)
endif()
# Relative to the file itself, so that a moved or staged prefix still works.
file(RELATIVE_PATH tern_pc_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/TernCoreKit.pc.in TernCoreKit.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/TernCoreKit.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
