# Installation and archive: headers, libraries, programs, the CMake package, pkg-config files.
#
# Everything is found relative to itself, so that an installation can be moved as a whole.
include(CMakePackageConfigHelpers)

set(KELD_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/keld-transl)
file(RELATIVE_PATH KELD_LIB_FROM_BIN
     ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})

set_target_properties(keld-translator-kit PROPERTIES EXPORT_NAME translator-kit)
set_target_properties(keld-common keld-transl PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(keld PROPERTIES INSTALL_RPATH "$ORIGIN/${KELD_LIB_FROM_BIN}")

install(TARGETS keld-common keld-transl keld-translator-kit
  EXPORT keld-transl-targets
  FILE_SET headers)
install(TARGETS keld)

install(EXPORT keld-transl-targets NAMESPACE keld:: DESTINATION ${KELD_PACKAGE_DIR})
configure_package_config_file(
  cmake/keld-transl-config.cmake.in ${PROJECT_BINARY_DIR}/package/keld-transl-config.cmake
  INSTALL_DESTINATION ${KELD_PACKAGE_DIR}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/package/keld-transl-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(
  FILES
    ${PROJECT_BINARY_DIR}/package/keld-transl-config.cmake
    ${PROJECT_BINARY_DIR}/package/keld-transl-config-version.cmake
    cmake/KeldAddTranslator.cmake
  DESTINATION ${KELD_PACKAGE_DIR})

file(RELATIVE_PATH KELD_PREFIX_FROM_PKGCONFIG
     ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" KELD_PREFIX_FROM_PKGCONFIG ${KELD_PREFIX_FROM_PKGCONFIG})
foreach(library keld-common keld-transl)
  configure_file(cmake/${library}.pc.in ${PROJECT_BINARY_DIR}/package/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/package/${library}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/keld-transl)

if(PROJECT_IS_TOP_LEVEL)
  set(CPACK_GENERATOR TGZ)
  set(CPACK_PACKAGE_FILE_NAME
      keld-transl-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
  set(CPACK_STRIP_FILES ON)
  set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
  include(CPack)
endif()
