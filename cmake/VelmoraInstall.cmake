# What "cmake --install" puts where: the library with its headers, what find_package(velmora) and
# pkg-config read, and the command when it is built. The components are the packages of VelmoraPackages.cmake.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

install(TARGETS velmora EXPORT velmora-targets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT library
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/velmora")
install(EXPORT velmora-targets NAMESPACE velmora:: DESTINATION "${package_dir}" COMPONENT development)
# What a client of the static library links besides.
set(package_dependencies)
set(pc_cflags)
set(pc_libs -lvelmora)
if(NOT BUILD_SHARED_LIBS)
  set(pc_cflags " -DVELMORA_STATIC")
  if(WIN32)
    set(pc_system_libraries ${system_libraries})
    if("SQLite::SQLite3" IN_LIST system_libraries)
      set(package_dependencies "find_dependency(SQLite3)")
      list(TRANSFORM pc_system_libraries REPLACE "^SQLite::SQLite3$" sqlite3)
    endif()
    list(TRANSFORM pc_system_libraries PREPEND -l)
    list(APPEND pc_libs ${pc_system_libraries})
  else()
    set(package_dependencies "find_dependency(SQLite3)\nfind_dependency(sdbus-c++)\nfind_dependency(EXPAT)")
    list(APPEND pc_libs -lsdbus-c++ -lsqlite3 -lexpat)
  endif()
endif()
list(JOIN pc_libs " " pc_libs)
configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/velmoraConfig.cmake.in" "${PROJECT_BINARY_DIR}/velmoraConfig.cmake"
  INSTALL_DESTINATION "${package_dir}")
# Before 1.0 each minor version may change the interface.
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/velmoraConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/velmoraConfig.cmake" "${PROJECT_BINARY_DIR}/velmoraConfigVersion.cmake"
  DESTINATION "${package_dir}" COMPONENT development)

# The way from velmora.pc up to the prefix, so that an installed tree may be moved.
set(pc_dir "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pc_prefix "${pc_dir}" "${CMAKE_INSTALL_PREFIX}")
file(RELATIVE_PATH pc_libdir "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH pc_includedir "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/velmora.pc.in" "${PROJECT_BINARY_DIR}/velmora.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/velmora.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT development)

if(TARGET velmora_cli)
  install(TARGETS velmora_cli RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT command)
  if(TARGET velmora_manual)
    foreach(section 1 7)
      install(DIRECTORY "${PROJECT_BINARY_DIR}/cli/manual/" DESTINATION "${CMAKE_INSTALL_MANDIR}/man${section}"
        COMPONENT command FILES_MATCHING PATTERN "*.${section}")
    endforeach()
    set(completion "${PROJECT_SOURCE_DIR}/cli/completion")
    install(FILES "${completion}/velmora.bash" RENAME velmora COMPONENT command
      DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
    set(zsh_dir site-functions)
    if(VELMORA_PACKAGES)
      set(zsh_dir vendor-completions)
    endif()
    install(FILES "${completion}/_velmora" COMPONENT command
      DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/${zsh_dir}")
    install(FILES "${completion}/velmora.fish" COMPONENT command
      DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
  endif()
endif()
if(TARGET mod_velmora)
  # On Windows beside the DLL.
  if(WIN32)
    install(TARGETS mod_velmora LIBRARY DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT command)
  else()
    install(TARGETS mod_velmora LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT command)
  endif()
endif()
