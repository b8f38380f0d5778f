# Installs the library, moves what was installed, and builds and runs a program against it.
#
#   cmake -DBUILD=<build tree> -DWORK=<scratch folder> -DCOMPILER=<C++ compiler> -P check.cmake
file(REMOVE_RECURSE "${WORK}")
set(run COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${WORK}/first" ${run})
file(RENAME "${WORK}/first" "${WORK}/prefix")

file(GLOB_RECURSE package_files "${WORK}/prefix/*.cmake" "${WORK}/prefix/*.pc")
foreach(file IN LISTS package_files)
  file(READ "${file}" text)
  string(FIND "${text}" "${BUILD}" build_at)
  if(NOT build_at EQUAL -1 OR text MATCHES "velmora_options")
    message(FATAL_ERROR "${file} names the tree that it was built in")
  endif()
endforeach()

file(GLOB_RECURSE pc "${WORK}/prefix/velmora.pc")
cmake_path(GET pc PARENT_PATH pc_dir)
set(ENV{PKG_CONFIG_PATH} "${pc_dir}")
execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S "${CMAKE_CURRENT_LIST_DIR}" -B "${WORK}/build"
  "-DCMAKE_PREFIX_PATH=${WORK}/prefix" "-DCMAKE_CXX_COMPILER=${COMPILER}"
  "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wconversion -Werror" ${run})
execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK}/build" ${run})
foreach(program with_find_package with_pkg_config)
  execute_process(COMMAND "${WORK}/build/${program}" ${run})
endforeach()
