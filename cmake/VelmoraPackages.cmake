# Packages by CPack: a Debian package for each component of VelmoraInstall.cmake, an archive and an installer for
# Windows. scripts/package makes and checks them.
set(CPACK_PACKAGE_NAME velmora)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR velmora)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "stations and offsets of borings along road alignments")
set(CPACK_PACKAGE_CONTACT "velmora maintainers <maintainers@velmora.invalid>")
set(CPACK_VERBATIM_VARIABLES ON)
set(packaging "${PROJECT_SOURCE_DIR}/packaging")

if(WIN32)
  set(CPACK_MONOLITHIC_INSTALL ON)
  set(CPACK_PACKAGE_FILE_NAME "velmora-${PROJECT_VERSION}-windows-x64")
  set(CPACK_PACKAGE_INSTALL_DIRECTORY velmora)
  set(CPACK_NSIS_EXECUTABLE makensis)
  set(CPACK_MODULE_PATH "${packaging}/windows")  # with NSIS.template.in
  # The manual is made by "scripts/docs build/package-windows/manual".
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" "${PROJECT_BINARY_DIR}/manual" DESTINATION .)
  install(FILES "${packaging}/windows/README.txt" "${packaging}/COPYRIGHT.txt" DESTINATION .)
  include(CPack)
  return()
endif()

install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT command)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/python/velmora" DESTINATION lib/python3/dist-packages COMPONENT python
  FILES_MATCHING PATTERN "*.py" PATTERN py.typed PATTERN __pycache__ EXCLUDE)

# The manual and the changelogs are compressed, without the time.
find_program(GZIP gzip REQUIRED)
install(CODE "file(GLOB pages \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_MANDIR}/man*/velmora*\")
  execute_process(COMMAND \"${GZIP}\" -9nf \${pages} COMMAND_ERROR_IS_FATAL ANY)" COMPONENT command)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file("${packaging}/debian/changelog.in" "${PROJECT_BINARY_DIR}/changelog" @ONLY)
execute_process(COMMAND ${GZIP} -9nkf "${PROJECT_BINARY_DIR}/changelog" COMMAND_ERROR_IS_FATAL ANY)

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/bin")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# velmora_package(COMPONENT NAME SECTION DESCRIPTION)
function(velmora_package component name section description)
  string(TOUPPER "${component}" key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME "${name}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION "${section}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${description}" PARENT_SCOPE)
  install(FILES "${packaging}/COPYRIGHT.txt" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" RENAME copyright COMPONENT ${component})
  install(FILES "${PROJECT_BINARY_DIR}/changelog.gz" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" COMPONENT ${component})
endfunction()
velmora_package(library libvelmora1 libs
"The library that the programs of a geotechnical suite share: alignments of
straights and arcs with their profiles, projects, settings and code files.
.
This package contains the shared library.")
velmora_package(development libvelmora-dev libdevel
"The library that the programs of a geotechnical suite share: alignments of
straights and arcs with their profiles, projects, settings and code files.
.
This package contains the headers for C++ and C, and what CMake and
pkg-config need to find the library.")
velmora_package(command velmora science
"A map point becomes a station, an offset and a level above the profile, and
back; roads come from and go to LandXML, DXF, GeoPackage and CSV; projects,
settings and code files of a geotechnical suite are listed, checked and
changed.
.
This package contains the command, its manual, completion for shells, an
extension of SQLite and examples.")
velmora_package(python python3-velmora python
"Places arrays, tables and lists of points along road alignments, and reads
the settings and code files of a geotechnical suite.
.
This package contains the module for Python 3.")
# The library's number for packages of others, and the linker's list of libraries.
file(CONFIGURE OUTPUT shlibs CONTENT "libvelmora 1 libvelmora1 (>= ${PROJECT_VERSION})\n")
file(CONFIGURE OUTPUT triggers CONTENT "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_BINARY_DIR}/shlibs;${CMAKE_CURRENT_BINARY_DIR}/triggers")
set(CPACK_DEBIAN_COMMAND_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_BINARY_DIR}/triggers")
# Of the same version: the files come from one build.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libvelmora1 (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "libvelmora1 (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "libvelmora1 (= ${PROJECT_VERSION}), python3 (>= 3.9), python3-numpy")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-pandas, python3-geopandas")
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA "${packaging}/debian/postinst;${packaging}/debian/prerm")
set(CPACK_COMPONENTS_ALL library development command python)
include(CPack)
