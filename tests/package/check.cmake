# Installs the library, moves what was installed, and builds and runs programs against it.
#
#   cmake -DBUILD=<build tree> -DWORK=<scratch folder> -DCOMPILER=<C++ compiler>
#         [-DTOOLCHAIN=<file> -DRUN=<emulator>] -P check.cmake
#
# Where BUILD is not built yet, SOURCE names the tree to configure it from, with BUILD_SHARED_LIBS=OFF.
file(REMOVE_RECURSE "${WORK}")
set(run COMMAND_ERROR_IS_FATAL ANY)
set(compiler "-DCMAKE_CXX_COMPILER=${COMPILER}")
if(TOOLCHAIN)
  set(compiler "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
endif()
if(SOURCE)
  execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S "${SOURCE}" -B "${BUILD}" ${compiler}
    -DBUILD_SHARED_LIBS=OFF -DVELMORA_UNITY=ON -DVELMORA_CLI=OFF -DVELMORA_TESTS=OFF -DVELMORA_WERROR=ON -DCMAKE_BUILD_TYPE=${TYPE} ${run})
  execute_process(COMMAND ${CMAKE_COMMAND} --build "${BUILD}" ${run})
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${WORK}/first" ${run})
file(RENAME "${WORK}/first" "${WORK}/prefix")

file(GLOB_RECURSE package_files "${WORK}/prefix/*.cmake" "${WORK}/prefix/*.pc")
foreach(file IN LISTS package_files)
  file(READ "${file}" text)
  string(FIND "${text}" "${BUILD}" build_at)
  if(NOT build_at EQUAL -1 OR text MATCHES "velmora_options|velmora_objects")
    message(FATAL_ERROR "${file} names the tree that it was built in")
  endif()
endforeach()

# The headers are those that clients reach from the two that they include, no fewer and no more.
execute_process(COMMAND "${COMPILER}" -std=c++20 -MM "-I${WORK}/prefix/include"
  "${WORK}/prefix/include/velmora/velmora.h" "${WORK}/prefix/include/velmora/c/velmora.h" OUTPUT_VARIABLE reached ${run})
string(REGEX MATCHALL "velmora/[a-z_0-9/]+\\.h" reached "${reached}")
file(GLOB_RECURSE installed RELATIVE "${WORK}/prefix/include" "${WORK}/prefix/include/*")
list(REMOVE_DUPLICATES reached)
list(SORT reached)
list(SORT installed)
if(NOT reached STREQUAL installed)
  message(FATAL_ERROR "clients reach ${reached}, installed are ${installed}")
endif()

file(GLOB_RECURSE pc "${WORK}/prefix/velmora.pc")
cmake_path(GET pc PARENT_PATH pc_dir)
set(ENV{PKG_CONFIG_PATH} "${pc_dir}")
execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S "${CMAKE_CURRENT_LIST_DIR}" -B "${WORK}/build" ${compiler}
  "-DCMAKE_PREFIX_PATH=${WORK}/prefix"
  "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wconversion -Werror" ${run})
execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK}/build" ${run})

cmake_path(GET pc_dir PARENT_PATH library_dir)
set(ENV{LD_LIBRARY_PATH} "${library_dir}")
# Where Windows programs find their DLLs: ours, and for most the compiler's run time.
if(TOOLCHAIN)
  set(ours "${WORK}/prefix/bin")
  set(with_runtime "${ours}")
  foreach(dll libstdc++-6.dll libwinpthread-1.dll)
    execute_process(COMMAND "${COMPILER}" -print-file-name=${dll} OUTPUT_VARIABLE path
      OUTPUT_STRIP_TRAILING_WHITESPACE ${run})
    cmake_path(GET path PARENT_PATH folder)
    list(APPEND with_runtime "${folder}")
  endforeach()
endif()
file(GLOB programs "${WORK}/build/with*")
list(FILTER programs INCLUDE REGEX "/with(out)?_[a-z_]+(\\.exe)?$")
list(LENGTH programs count)
if(count LESS 2)
  message(FATAL_ERROR "the programs were not built: ${programs}")
endif()
foreach(program IN LISTS programs)
  set(ENV{WINEPATH} "${with_runtime}")
  if(program MATCHES "without_runtime")
    set(ENV{WINEPATH} "${ours}")
  endif()
  execute_process(COMMAND ${RUN} "${program}" ${run})
endforeach()
