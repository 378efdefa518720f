# What `cpack` makes: one Debian package of all that is installed, for whoever builds programs with the library.

find_program(TIDALUME_SHLIBDEPS dpkg-shlibdeps)
find_program(TIDALUME_GZIP gzip)
mark_as_advanced(TIDALUME_SHLIBDEPS TIDALUME_GZIP)
if(NOT TIDALUME_SHLIBDEPS OR NOT TIDALUME_GZIP)
  message(STATUS "cpack is left out: dpkg-shlibdeps or gzip is missing. On Debian: apt-get install dpkg-dev gzip")
  return()
endif()

set(CPACK_GENERATOR DEB)
# A placeholder: who maintains the package, and where mail arrives, is the owner's to choose.
set(CPACK_PACKAGE_CONTACT "Maintainers of Tidalume <maintainers@tidalume.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Library with headers, CMake and pkg-config files and Java classes,
and a GL context without a window that reads and writes picture files.")
# Libraries that are linked are found by themselves; these have the headers and link names that programs take.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS libgles-dev libegl-dev)
if(TIDALUME_BUILD_HEADLESS)
  list(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS libpng-dev libjpeg-dev libwebp-dev)
endif()
list(JOIN CPACK_DEBIAN_PACKAGE_DEPENDS ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
if(TIDALUME_BUILD_JAVA)
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS default-jre-headless)
endif()

# What Debian wants of every package.
set(root ${PROJECT_BINARY_DIR}/debian)
set(documents ${root}/usr/share/doc/tidalume)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${documents}/changelog.Debian "tidalume (${PROJECT_VERSION}-1) unstable; urgency=medium

  * Version ${PROJECT_VERSION}: see changelog.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
configure_file(CHANGELOG.md ${documents}/changelog COPYONLY)
execute_process(COMMAND ${TIDALUME_GZIP} -9nf ${documents}/changelog.Debian ${documents}/changelog
  COMMAND_ERROR_IS_FATAL ANY)
file(WRITE ${documents}/copyright "The owner of Tidalume has not chosen a licence: none is claimed.\n")
file(WRITE ${root}/usr/share/lintian/overrides/tidalume
  "# Debian keeps liblog there, and the loader does not search it by itself.
tidalume: custom-library-search-path RUNPATH /usr/lib/*/android *
")
set(CPACK_INSTALLED_DIRECTORIES ${root} /)
file(WRITE ${PROJECT_BINARY_DIR}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/triggers)
# Modes are the same whatever the umask of who packs.
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
file(WRITE ${PROJECT_BINARY_DIR}/SetModes.cmake
  "execute_process(COMMAND chmod -R u=rwX,go=rX \${CPACK_TEMPORARY_INSTALL_DIRECTORY} COMMAND_ERROR_IS_FATAL ANY)\n")
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/SetModes.cmake)

include(CPack)
