# Holds the sources of the library and of the command to their rooms and to the one room that calls the system.
#
#   cmake -DROOT=<source tree> -DROOMS="velmora/text|velmora/platform|...|cli/terminal|..." -P check_layers.cmake
#
# ROOMS lists the folders of each tree from the lowest up. A file may include what is in its own room and in those
# before it; cli/ may include all of velmora/; files beside the rooms (velmora/velmora.h, cli/command.cpp) are above
# them all, but export.h, portability.h and version.h may be included anywhere. Outside velmora/platform no header
# of the system or of a processor is included, no condition asks for either, and outside velmora/portability.h no
# compiler extension is spelled out.
# What changes a disk, or opens a file to read its content, is called in one source a system, where tests
# observe each call and make it fail; so are the calls of SQLite and of Windows that write files themselves.
# Fails with a line for each offence.
cmake_minimum_required(VERSION 3.23)

set(system_headers "^(windows|unistd|fcntl|dirent|dlfcn|pwd|poll|pthread|signal|direct|io|process|tchar|shlobj|shlwapi|ddeml|objbase|winreg|winerror|winuser|sqlite3|expat|xmllite|[a-z]*intrin|arm_neon|cpuid)\\.h$|^(sys|linux|netinet|arpa|dbus|sdbus-c\\+\\+)/")
set(system_macros "_WIN32|_WIN64|WIN32|__MINGW32__|__MINGW64__|_MSC_VER|__linux__|__unix__|__APPLE__|__CYGWIN__|__x86_64__|__aarch64__|__SSE[0-9_]*__|__AVX[0-9_]*__|__ARM_NEON|_M_X64|_M_ARM64|__GNUC__|__clang__")
set(extensions "__builtin_|__atomic_|__sync_|__attribute__|__declspec|__int128|__extension__|gnu::")
set(anywhere velmora/export.h velmora/portability.h velmora/version.h)
# Clients include the one, so it asks for their system; the other holds what differs between compilers.
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
  string(REGEX MATCH "^(velmora|cli)(/[a-z_0-9]+)?/" room "${file}")
  string(REGEX REPLACE "/$" "" room "${room}")
  set(${result} "${room}" PARENT_SCOPE)
endfunction()

function(check_include file number included)
  if(included IN_LIST anywhere OR (included MATCHES "^velmora/" AND file MATCHES "^cli/"))
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

function(check_line file number line)
  if(line MATCHES "^[ \t]*#[ \t]*include[ \t]*\"((velmora|cli)/[^\"]+)")
    check_include("${file}" ${number} "${CMAKE_MATCH_1}")
  elseif(NOT file MATCHES "^velmora/platform/")
    if(line MATCHES "^[ \t]*#[ \t]*include[ \t]*[<\"]([^>\"]+)")
      set(header "${CMAKE_MATCH_1}")
      if(header MATCHES "${system_headers}")
        offence("<${header}> belongs in velmora/platform")
      elseif(line MATCHES "\"")
        offence("\"${header}\" is not a path from the root of the sources")
      endif()
    elseif(line MATCHES "^[ \t]*#[ \t]*(if|ifdef|ifndef|elif)[^a-z].*" AND NOT file IN_LIST may_ask)
      if(line MATCHES "(^|[^A-Za-z0-9_])(${system_macros})([^A-Za-z0-9_]|$)")
        offence("only velmora/platform knows which system and processor it is on")
      endif()
    endif()
  endif()
  set(offences ${offences} PARENT_SCOPE)
endfunction()

file(GLOB_RECURSE files RELATIVE "${ROOT}" "${ROOT}/velmora/*.h" "${ROOT}/velmora/*.cpp" "${ROOT}/velmora/*.inc"
     "${ROOT}/cli/*.h" "${ROOT}/cli/*.cpp")
list(LENGTH files count)
if(count EQUAL 0)
  message(FATAL_ERROR "no sources under ${ROOT}")
endif()
foreach(file IN LISTS files)
  room_of("${file}" room)
  if(room MATCHES "/" AND NOT room IN_LIST rooms)
    set(number 1)
    offence("\"${room}\" is no room of the build files")
    continue()
  endif()
  # Only the preprocessor's lines matter; what could upset a CMake list is taken out of them.
  file(READ "${ROOT}/${file}" text)
  string(REPLACE "\r" "" text "${text}")
  string(REGEX REPLACE "[][;\\]" " " text "${text}")
  string(REPLACE "\n" ";" lines "${text}")
  set(number 1)
  if(NOT file MATCHES "^velmora/platform/" AND NOT file IN_LIST may_ask AND text MATCHES "(^|[^A-Za-z0-9_])(${extensions})")
    offence("the compiler extension \"${CMAKE_MATCH_2}\" belongs in velmora/portability.h")
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
