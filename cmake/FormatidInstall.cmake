# Installation: the public headers, the library, the command, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(formatid_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/formatid)
set(formatid_template_dir ${CMAKE_CURRENT_LIST_DIR})
set(formatid_output_dir ${PROJECT_BINARY_DIR}/package)

configure_package_config_file(
  ${formatid_template_dir}/formatidConfig.cmake.in ${formatid_output_dir}/formatidConfig.cmake
  INSTALL_DESTINATION ${formatid_package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
  ${formatid_output_dir}/formatidConfigVersion.cmake COMPATIBILITY SameMinorVersion)

# Paths in the .pc file hang on its own place, so that an installed tree may be moved.
set(formatid_pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH formatid_pc_prefix ${formatid_pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH formatid_pc_libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH formatid_pc_includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(${formatid_template_dir}/formatid.pc.in ${formatid_output_dir}/formatid.pc @ONLY)

install(TARGETS formatid EXPORT formatidTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS formatid_iwork_module LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/formatid)
install(TARGETS formatid_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/formatid DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT formatidTargets NAMESPACE formatid:: DESTINATION ${formatid_package_dir})
install(FILES ${formatid_output_dir}/formatidConfig.cmake
              ${formatid_output_dir}/formatidConfigVersion.cmake
        DESTINATION ${formatid_package_dir})
install(FILES ${formatid_output_dir}/formatid.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
