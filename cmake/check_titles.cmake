# Holds the titles of lists in velmora/lists/titles.cpp and in docs/point-lists.md together.
#
#   cmake -DROOT=<source tree> -P check_titles.cmake
cmake_minimum_required(VERSION 3.23)

file(READ "${ROOT}/velmora/lists/titles.cpp" source)
string(REGEX REPLACE "\nstd::wstring TitleKey.*" "" source "${source}")
string(REGEX MATCHALL "L\"[^\"]+\"" known "${source}")
list(TRANSFORM known REPLACE "^L\"(.*)\"$" "\\1")

set(documented)
file(STRINGS "${ROOT}/docs/point-lists.md" rows REGEX "^\\| (id|northing \\(n\\)|easting \\(e\\)|level|station|offset|side) \\|" ENCODING UTF-8)
foreach(row IN LISTS rows)
  string(REGEX MATCHALL "`[^`]+`" titles "${row}")
  list(APPEND documented ${titles})
endforeach()
list(TRANSFORM documented REPLACE "`" "")

# The order counts too: it decides between several titles of one column. Both lists of ids are the same.
if(NOT known OR NOT "${known}" STREQUAL "${documented}")
  message(FATAL_ERROR "docs/point-lists.md and velmora/lists/titles.cpp differ:\n${documented}\n${known}")
endif()
