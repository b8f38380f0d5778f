# Fails when the library exports a function that exported.txt does not list, when it lists one that is not exported,
# or when no operation of the sweep calls a function that it lists as swept.
#
#   cmake -DNM=nm -DLIBRARY=libvelmora.so -P check_exported.cmake
cmake_minimum_required(VERSION 3.23)

file(READ "${CMAKE_CURRENT_LIST_DIR}/exported.txt" list)
string(REGEX REPLACE "#[^\n]*" "" list "${list}")
string(REGEX MATCH "\\[swept\\]([^[]*)\\[writes nothing\\](.*)" list "${list}")
set(others "${CMAKE_MATCH_2}")
string(REGEX MATCHALL "[A-Za-z0-9_:]+" swept "${CMAKE_MATCH_1}")
string(REGEX MATCHALL "[A-Za-z0-9_:]+" others "${others}")

execute_process(COMMAND "${NM}" -DC --defined-only "${LIBRARY}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL " T velmora(::|_)[A-Za-z0-9_:]+" symbols "${symbols}")
list(TRANSFORM symbols REPLACE " T (velmora::)?" "")
list(REMOVE_DUPLICATES symbols)
list(FILTER symbols EXCLUDE REGEX "::(operator)?$")  # destructors and operators
set(unknown)
foreach(name IN LISTS symbols)
  string(REGEX REPLACE ".*::" "" member "${name}")
  if(NOT name IN_LIST swept AND NOT name IN_LIST others AND NOT name MATCHES "(^|::)${member}::${member}$")
    list(APPEND unknown "${name}")
  endif()
endforeach()

set(stale ${swept} ${others})
list(REMOVE_ITEM stale ${symbols} HwndNotifyWindow::Notify)  # the last one is of Windows

file(GLOB sources "${CMAKE_CURRENT_LIST_DIR}/*_operations.cpp")
set(operations)
foreach(source IN LISTS sources)
  file(READ "${source}" text)
  string(APPEND operations "${text}")
endforeach()
set(not_called)
foreach(name IN LISTS swept)
  string(REGEX REPLACE ".*::" "" member "${name}")
  if(NOT operations MATCHES "[^A-Za-z0-9_]${member}\\(")
    list(APPEND not_called "${name}")
  endif()
endforeach()
list(LENGTH symbols count)
if(unknown OR stale OR not_called OR count EQUAL 0)
  message(FATAL_ERROR "exported but not in exported.txt: ${unknown}\nin exported.txt but not exported: ${stale}\nswept but in no operation: ${not_called}")
endif()
