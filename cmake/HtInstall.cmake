# What `cmake --install` gives: both libraries, the public headers, htcoreConfig.cmake with a component a unit,
# and htcore.pc. Included by ht_library(), whose `units` and `packages` it uses.
include(CMakePackageConfigHelpers)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/htcore)

foreach(kind static shared)
  install(TARGETS htcore-${kind} EXPORT htcore-${kind}-targets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT htcore-${kind}-targets NAMESPACE htcore:: DESTINATION ${config_dir})
endforeach()

# The table of units, packages included, in the words htcoreConfig.cmake reads.
set(table)
foreach(unit IN LISTS units)
  get_property(below GLOBAL PROPERTY HT_UNIT_${unit}_ON)
  get_property(needs GLOBAL PROPERTY HT_UNIT_${unit}_PACKAGES)
  string(APPEND table "set(_htcore_${unit}_ON ${below})\nset(_htcore_${unit}_PACKAGES ${needs})\n")
endforeach()
foreach(package IN LISTS packages)
  get_property(target GLOBAL PROPERTY HT_PACKAGE_${package}_TARGET)
  string(APPEND table "set(_htcore_${package}_TARGET ${target})\n")
endforeach()
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/htcoreConfig.cmake.in
  ${PROJECT_BINARY_DIR}/htcoreConfig.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/htcoreConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/htcoreConfig.cmake ${PROJECT_BINARY_DIR}/htcoreConfigVersion.cmake
        DESTINATION ${config_dir})

set(pc_requires)
foreach(package IN LISTS packages)
  get_property(module GLOBAL PROPERTY HT_PACKAGE_${package}_MODULE)
  list(APPEND pc_requires ${module})
endforeach()
list(JOIN pc_requires " " pc_requires)
file(RELATIVE_PATH pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)  # the prefix may be moved
configure_file(${PROJECT_SOURCE_DIR}/cmake/htcore.pc.in ${PROJECT_BINARY_DIR}/htcore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/htcore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# A header is public when its unit's face brings it; the script follows the includes at install time.
list(JOIN units " " unit_words)
install(CODE "
  set(units ${unit_words})
  set(source_root \"${HT_SOURCE_ROOT}\")
  set(include_dir \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_INCLUDEDIR}/htcore\")")
install(SCRIPT ${PROJECT_SOURCE_DIR}/cmake/HtInstallHeaders.cmake)
