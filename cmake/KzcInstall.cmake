# Installs the libraries with a package configuration, so that find_package(kzcBUIMngr) works.

include(CMakePackageConfigHelpers)

get_property(installed_targets GLOBAL PROPERTY KZC_INSTALLED_TARGETS)
install(TARGETS ${installed_targets} EXPORT kzcBUIMngrTargets
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(EXPORT kzcBUIMngrTargets NAMESPACE kzc:: DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/kzcBUIMngr")
configure_package_config_file(cmake/kzcBUIMngrConfig.cmake.in "${CMAKE_CURRENT_BINARY_DIR}/kzcBUIMngrConfig.cmake"
  INSTALL_DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/kzcBUIMngr")
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/kzcBUIMngrConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/kzcBUIMngrConfig.cmake"
              "${CMAKE_CURRENT_BINARY_DIR}/kzcBUIMngrConfigVersion.cmake"
              "${CMAKE_CURRENT_LIST_DIR}/FindLibCSV.cmake"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/kzcBUIMngr")
