# Tests the HTML report in a browser.
#
#   cmake -DSOURCE=<tests/html> -DWORK=<scratch folder> -DCOMMAND=<velmora> -DEXAMPLES=<examples> -DCHROMIUM=<chromium>
#         -DNODE=<node> -DNPM=<npm> -P check.cmake
foreach(program IN ITEMS CHROMIUM NODE NPM)
  if(NOT EXISTS "${${program}}")
    message(FATAL_ERROR "no ${program}; scripts/install-deps installs it")
  endif()
endforeach()

# The packages are installed beside copies of the tests, and again only when their list changes.
set(packages package.json package-lock.json)
foreach(file IN LISTS packages)
  file(READ "${SOURCE}/${file}" text)
  string(APPEND wanted "${text}")
endforeach()
set(stamp "${WORK}/installed")
if(EXISTS "${stamp}")
  file(READ "${stamp}" installed)
endif()
if(NOT "${installed}" STREQUAL "${wanted}")
  file(REMOVE_RECURSE "${WORK}")
  foreach(file IN LISTS packages)
    file(COPY "${SOURCE}/${file}" DESTINATION "${WORK}")
  endforeach()
  execute_process(COMMAND "${NPM}" ci --no-audit --no-fund --ignore-scripts --loglevel=error
    WORKING_DIRECTORY "${WORK}" COMMAND_ERROR_IS_FATAL ANY)
  file(WRITE "${stamp}" "${wanted}")
endif()
file(COPY "${SOURCE}/report_test.mjs" DESTINATION "${WORK}")
set(ENV{VELMORA_COMMAND} "${COMMAND}")
set(ENV{VELMORA_EXAMPLES} "${EXAMPLES}")
set(ENV{CHROMIUM} "${CHROMIUM}")
execute_process(COMMAND "${NODE}" --test report_test.mjs WORKING_DIRECTORY "${WORK}" COMMAND_ERROR_IS_FATAL ANY)
