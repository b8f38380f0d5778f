# Holds the sources of the library and of the command to their rooms and to the one room that calls the system.
#
#   cmake -DROOT=<source tree> -DROOMS="velmora/text|velmora/platform|...|cli/terminal|..." -P check_layers.cmake
#
# ROOMS lists the folders of each tree from the lowest up. A file may include what is in its own room and in those
# before it; cli/ may include all of velmora/, sql/ only the C interface; files beside the rooms (velmora/velmora.h,
# cli/command.cpp) are above them all, but export.h, portability.h and version.h may be included anywhere. Outside
# velmora/platform only headers of C++ and of the libraries below are included, and no name is spelled that is
# reserved for compilers and systems: no condition asks for either. Extensions of compilers, and conditions on which
# one it is, stand in velmora/portability.h alone.
# What changes a disk, or opens a file to read its content, is called in one source a system, where tests
# observe each call and make it fail; so are the calls of SQLite and of Windows that write files themselves.
# Fails with a line for each offence.
cmake_minimum_required(VERSION 3.23)

# Headers of other libraries, and the sources that may include them; those of C++ have names without an ending.
set(library_headers
  "CLI/CLI\\.hpp" "^cli/"
  "nlohmann/json(_fwd)?\\.hpp" "^cli/(align|doctor|help|output)/"
  "cairo(-pdf|-ft)?\\.h|fontconfig/fontconfig\\.h" "^cli/report/cairo_"
  "xlsxwriter\\.h" "^cli/report/xlsx_table\\.cpp$"
  "sqlite3ext\\.h" "^sql/sqlite/"
  "std(def|int)\\.h" "^velmora/c/velmora\\.h$")
# What only portability.h spells: names of compilers and of their extensions. Outside velmora/platform no reserved
# name is spelled at all.
string(CONCAT extensions "__(attribute|builtin|declspec|extension|forceinline|has_|inline|restrict|typeof|asm|int128|atomic|sync"
       "|thread|vectorcall|GNUC|clang|MINGW|INTEL)[A-Za-z0-9_]*|_(MSC_VER|Pragma)|vector_size|asm( +volatile)? *\\("
       "|(gnu|clang|msvc)::|# *pragma")
set(reserved "_[_A-Z][A-Za-z0-9_]*|${extensions}")
set(of_the_language "__(cplusplus|cpp_[a-z_]+|has_cpp_attribute|FILE__|LINE__|VA_ARGS__|VA_OPT__|func__|STDCPP_[A-Z_]+)|_Exit")
set(old_system_macros "WIN(32|64)|unix|linux|i386")
set(anywhere velmora/export.h velmora/portability.h velmora/version.h)
# Clients include both, so they ask for their system; the second also holds what differs between compilers.
set(may_ask velmora/export.h velmora/portability.h)

# Opening an existing file only to ask about it changes nothing and is free.
set(disk_calls_home "^velmora/platform/(posix|win32)/disk_calls\\.cpp$")
set(disk_calls
  "[io]?fstream|O_(CREAT|WRONLY|RDWR|TRUNC|APPEND)|CREATE_(NEW|ALWAYS)|OPEN_ALWAYS|TRUNCATE_EXISTING"
  "File(Rename|Disposition|EndOfFile|Allocation)Info" "(_?w?fopen|freopen|tmpfile|creat|mkd?o?stemps?)\\("
  "(f?truncate|f(data)?sync|unlink(at)?|rename(at2?)?|remove(_all)?)\\(" "(link(at)?|symlink(at)?|mkdir(at)?|rmdir)\\("
  "(create_(directory|directories|symlink|hard_link)|copy_file|resize_file|(filesystem|fs)::copy)\\("
  "(Copy|Delete|Move|Replace|Write|Flush)File(Ex|Buffers)?[AW2]?\\(|(Create|Remove)Directory(Ex)?[AW]?\\("
  "SetEndOfFile\\(")
set(database_calls_home "^velmora/platform/(posix/registry_database|table_database)\\.cpp$")
set(database_calls "sqlite3_open(_v2|16)?\\(")
set(profile_calls_home "^velmora/platform/win32/profile\\.cpp$")
set(profile_calls "WritePrivateProfile(String|Section|Struct)[AW]?\\(")
foreach(kind IN ITEMS disk_calls database_calls profile_calls)
  list(TRANSFORM ${kind} REPLACE "(.+)" "(^|[^A-Za-z0-9_.>])(\\1)")
endforeach()

string(REPLACE "|" ";" rooms "${ROOMS}")
if(NOT rooms)
  message(FATAL_ERROR "ROOMS names no room")
endif()

set(offences 0)
macro(offence text)
  math(EXPR offences "${offences} + 1")
  message("${file}:${number}: ${text}")
endmacro()

# "velmora/text" of "velmora/text/string.h"; "velmora" of a file beside the rooms.
function(room_of file result)
  string(REGEX MATCH "^(velmora|cli|sql)(/[a-z_0-9]+)?/" room "${file}")
  string(REGEX REPLACE "/$" "" room "${room}")
  set(${result} "${room}" PARENT_SCOPE)
endfunction()

function(check_include file number included)
  if(included IN_LIST anywhere OR (included MATCHES "^velmora/" AND file MATCHES "^cli/") OR
     (included STREQUAL "velmora/c/velmora.h" AND file MATCHES "^sql/"))
    return()
  endif()
  room_of("${file}" room)
  room_of("${included}" other)
  list(FIND rooms "${room}" at)
  list(FIND rooms "${other}" other_at)
  if(at EQUAL -1)
    set(at 1000)  # beside the rooms
  endif()
  if(other_at EQUAL -1)
    set(other_at 1000)
  endif()
  string(REGEX REPLACE "/.*" "" house "${room}")
  if(other_at GREATER at OR NOT other MATCHES "^${house}")
    offence("\"${room}\" may not include \"${included}\": rooms include only those listed before them (CMakeLists.txt)")
  endif()
  set(offences ${offences} PARENT_SCOPE)
endfunction()

# A header that is not one of the sources.
function(check_header file number header)
  set(libraries ${library_headers})
  while(libraries)
    list(POP_FRONT libraries name users)
    if(header MATCHES "^(${name})$" AND file MATCHES "${users}")
      return()
    endif()
  endwhile()
  if(NOT header MATCHES "^[a-z_]+$")
    offence("<${header}> belongs in velmora/platform, or in the list of cmake/check_layers.cmake")
  endif()
  set(offences ${offences} PARENT_SCOPE)
endfunction()

function(check_line file number line)
  if(line MATCHES "^[ \t]*#[ \t]*include[ \t]*([<\"]?)([^>\"]*)")
    set(mark "${CMAKE_MATCH_1}")
    set(included "${CMAKE_MATCH_2}")
    if(included MATCHES "^(velmora|cli|sql)/")
      check_include("${file}" ${number} "${included}")
      if(NOT mark STREQUAL "\"")
        offence("<${included}> is one of the sources and stands in quotes")
      endif()
    elseif(file MATCHES "^velmora/platform/")
      return()
    elseif(mark STREQUAL "<")
      check_header("${file}" ${number} "${included}")
    else()
      offence("\"${included}\" is not a path from the root of the sources")
    endif()
  elseif(line MATCHES "^[ \t]*#[ \t]*(if|ifdef|ifndef|elif)[^a-z].*" AND NOT file MATCHES "^velmora/platform/" AND
         NOT file IN_LIST may_ask)
    if(line MATCHES "(^|[^A-Za-z0-9_])(${old_system_macros})([^A-Za-z0-9_]|$)")
      offence("only velmora/platform knows which system and processor it is on")
    endif()
  endif()
  set(offences ${offences} PARENT_SCOPE)
endfunction()

file(GLOB_RECURSE files RELATIVE "${ROOT}" "${ROOT}/velmora/*.h" "${ROOT}/velmora/*.cpp" "${ROOT}/velmora/*.inc"
     "${ROOT}/cli/*.h" "${ROOT}/cli/*.cpp" "${ROOT}/sql/*.h" "${ROOT}/sql/*.cpp")
list(LENGTH files count)
if(count EQUAL 0)
  message(FATAL_ERROR "no sources under ${ROOT}")
endif()
foreach(file IN LISTS files)
  room_of("${file}" room)
  if(room MATCHES "/" AND NOT room MATCHES "^sql/" AND NOT room IN_LIST rooms)
    set(number 1)
    offence("\"${room}\" is no room of the build files")
    continue()
  endif()
  # Only the preprocessor's lines matter; what could upset a CMake list is taken out of them.
  file(READ "${ROOT}/${file}" text)
  string(REPLACE "\r" "" text "${text}")
  string(REGEX REPLACE "[][;\\]" " " text "${text}")
  string(REPLACE "\n" ";" lines "${text}")
  set(names "${reserved}")
  set(home "velmora/platform or ")
  if(file MATCHES "^velmora/platform/" OR file IN_LIST may_ask)
    set(names "${extensions}")
    set(home)
  endif()
  if(NOT file STREQUAL "velmora/portability.h")
    string(REGEX REPLACE "${of_the_language}" "" spelled "${text}")
    if(spelled MATCHES "(^|[^A-Za-z0-9_])(${names})")
      set(name "${CMAKE_MATCH_2}")
      string(FIND "${spelled}" "${CMAKE_MATCH_0}" at)
      string(SUBSTRING "${spelled}." 0 ${at} before)
      string(REGEX MATCHALL "\n" before "${before}.\n")
      list(LENGTH before number)
      offence("\"${name}\" is for one compiler or system and belongs in ${home}velmora/portability.h")
    endif()
  endif()
  set(calls)
  foreach(kind IN ITEMS disk_calls database_calls profile_calls)
    foreach(call IN LISTS ${kind})
      if(NOT text MATCHES "${call}")
      elseif(file MATCHES "${${kind}_home}")
        set(${kind}_seen TRUE)
      else()
        list(APPEND calls "${call}")
      endif()
    endforeach()
  endforeach()
  set(number 0)
  foreach(line IN LISTS lines)
    math(EXPR number "${number} + 1")
    if(line MATCHES "^[ \t]*#")
      check_line("${file}" ${number} "${line}")
    elseif(calls)
      string(REGEX REPLACE "//.*|\"[^\"]*\"" "" code "${line}")
      foreach(call IN LISTS calls)
        if(code MATCHES "${call}")
          offence("\"${CMAKE_MATCH_2}\" is called only in velmora/platform/*/disk_calls.cpp or its own source there")
        endif()
      endforeach()
    endif()
  endforeach()
endforeach()
foreach(kind IN ITEMS disk_calls database_calls profile_calls)
  if(NOT ${kind}_seen)
    message(FATAL_ERROR "no file ${${kind}_home} makes such calls")
  endif()
endforeach()

if(offences GREATER 0)
  message(FATAL_ERROR "${offences} offence(s) against the rooms")
endif()
message("${count} files keep to their rooms")
