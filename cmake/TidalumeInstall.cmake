# What `cmake --install` lays down. Two components: Tidalume is the library with its headers, packages and jars,
# Headless the context without a window.

include(CMakePackageConfigHelpers)

set(TIDALUME_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Tidalume)
set(TIDALUME_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(TIDALUME_JAR_DIR ${CMAKE_INSTALL_DATADIR}/java)

# A pkg-config file finds the prefix from where it lies, so that the installed tree can be moved.
file(RELATIVE_PATH TIDALUME_PKGCONFIG_TO_PREFIX /prefix/${TIDALUME_PKGCONFIG_DIR} /prefix)

# Headers are installed in the folders that they are included by.
function(tidalume_install_headers component)
  foreach(header IN LISTS ARGN)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${PROJECT_SOURCE_DIR}/${header}
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tidalume/${folder} COMPONENT ${component})
  endforeach()
endfunction()

function(tidalume_install_pkgconfig component name)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${TIDALUME_PKGCONFIG_DIR} COMPONENT ${component})
endfunction()

install(TARGETS Tidalume EXPORT TidalumeTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Tidalume)
# Debian keeps liblog in a folder that the loader does not search by itself.
set_target_properties(Tidalume PROPERTIES INSTALL_RPATH_USE_LINK_PATH ON)
install(EXPORT TidalumeTargets NAMESPACE Tidalume:: DESTINATION ${TIDALUME_PACKAGE_DIR} COMPONENT Tidalume)
configure_package_config_file(cmake/TidalumeConfig.cmake.in TidalumeConfig.cmake INSTALL_DESTINATION ${TIDALUME_PACKAGE_DIR})
write_basic_package_version_file(TidalumeConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(
  FILES
    ${PROJECT_BINARY_DIR}/TidalumeConfig.cmake
    ${PROJECT_BINARY_DIR}/TidalumeConfigVersion.cmake
    cmake/FindOpenGLES3.cmake
  DESTINATION ${TIDALUME_PACKAGE_DIR} COMPONENT Tidalume)
tidalume_install_pkgconfig(Tidalume tidalume)
tidalume_install_headers(Tidalume ${TIDALUME_PUBLIC_HEADERS})
# The page that the headers point to, and the one that it links to: installed pages link to nothing else.
install(FILES docs/life-cycle.md docs/threads.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/tidalume/docs COMPONENT Tidalume)

if(TIDALUME_BUILD_JAVA)
  install_jar(TidalumeJar DESTINATION ${TIDALUME_JAR_DIR} COMPONENT Tidalume)
  install(FILES ${PROJECT_BINARY_DIR}/tidalume-sources.jar ${PROJECT_BINARY_DIR}/tidalume-javadoc.jar
    DESTINATION ${TIDALUME_JAR_DIR} COMPONENT Tidalume)
endif()

if(TIDALUME_BUILD_HEADLESS)
  install(TARGETS TidalumeHeadless EXPORT TidalumeHeadlessTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Headless)
  install(EXPORT TidalumeHeadlessTargets NAMESPACE Tidalume:: DESTINATION ${TIDALUME_PACKAGE_DIR} COMPONENT Headless)
  install(FILES cmake/FindWebP.cmake DESTINATION ${TIDALUME_PACKAGE_DIR} COMPONENT Headless)
  tidalume_install_pkgconfig(Headless tidalume-headless)
  tidalume_install_headers(Headless ${TIDALUME_HEADLESS_PUBLIC_HEADERS})
  if(TIDALUME_BUILD_JAVA)
    install(TARGETS TidalumeHeadlessJni LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Headless)
    install_jar(TidalumeHeadlessJar DESTINATION ${TIDALUME_JAR_DIR} COMPONENT Headless)
  endif()
endif()

if(TIDALUME_IS_TOP_LEVEL)
  include(TidalumePackage)
endif()
