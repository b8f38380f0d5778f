# How all sources are compiled, and the rooms of the library and of the command.

add_library(velmora_options INTERFACE)
target_include_directories(velmora_options INTERFACE "${PROJECT_SOURCE_DIR}")
if(MSVC)  # also clang-cl
  target_compile_options(velmora_options INTERFACE
    /W4 $<$<BOOL:${VELMORA_WERROR}>:/WX> /utf-8 /EHsc /Zc:__cplusplus /permissive-
    # The same bits from every compiler and processor.
    /fp:precise)
  target_compile_definitions(velmora_options INTERFACE NOMINMAX)
else()
  target_compile_options(velmora_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion $<$<BOOL:${VELMORA_WERROR}>:-Werror>
    # GCC 12 sees overlaps inside operator+ of std::string that are not there.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
    # Fuzz targets reach what programs do not.
    $<$<NOT:$<BOOL:${VELMORA_FUZZ}>>:-fvisibility=hidden$<SEMICOLON>-fvisibility-inlines-hidden>
    # The same bits from every compiler and processor: no fused multiply-add.
    -ffp-contract=off)
endif()
if(VELMORA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1
    -gline-tables-only)  # what they report has lines, and building takes a tenth less
  add_link_options(-fsanitize=address,undefined)
endif()
if(VELMORA_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "VELMORA_FUZZ needs clang: -DCMAKE_CXX_COMPILER=clang++")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(WIN32)
  target_compile_definitions(velmora_options INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0601)
  # A program of the suite gets one DLL, not the compiler's run time beside it.
  if(MSVC)
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
  else()
    target_link_options(velmora_options INTERFACE -static)
  endif()
endif()

# velmora_room(TARGET NAME [SOURCES file...] [SYSTEM file...] [POSIX file...] [WIN32 file...])
# Adds the sources in the folder NAME to TARGET. SYSTEM names sources that exist under posix/ and win32/ both,
# POSIX and WIN32 what only one has. The order of the calls is the order of the rooms.
function(velmora_room target name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;SYSTEM;POSIX;WIN32" ${ARGN})
  if(WIN32)
    set(system win32)
    set(only ${ROOM_WIN32})
  else()
    set(system posix)
    set(only ${ROOM_POSIX})
  endif()
  set(files ${ROOM_SOURCES})
  foreach(source IN LISTS ROOM_SYSTEM only)
    list(APPEND files "${system}/${source}")
  endforeach()
  list(TRANSFORM files PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/${name}/")
  target_sources(${target} PRIVATE ${files})
  set_source_files_properties(${files} PROPERTIES UNITY_GROUP ${name})
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME house)
  set_property(GLOBAL APPEND PROPERTY VELMORA_ROOMS "${house}/${name}")
endfunction()

# With VELMORA_UNITY the rooms of TARGET are compiled as one source each, which takes less than half the time of a whole
# build. The names that files keep to themselves are told apart within a room, not across rooms.
function(velmora_unity target)
  if(VELMORA_UNITY)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    # To the compiler the files are headers then, whose classes should have no members of a file's own types.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endif()
endfunction()
