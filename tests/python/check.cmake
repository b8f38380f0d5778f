# Builds the wheel, installs it in a new virtual environment without a network, and tests it there.
#
#   cmake -DSOURCE=<source tree> -DLIBRARY=<shared library> -DWORK=<scratch folder> -P check.cmake
#
# The Python is Debian's own, whose modules the environment sees.
file(REMOVE_RECURSE "${WORK}")
# A copy, as a build leaves files beside what it builds.
file(COPY "${SOURCE}/python" DESTINATION "${WORK}" PATTERN build EXCLUDE PATTERN "*.egg-info" EXCLUDE)
file(COPY "${SOURCE}/velmora/version.h" DESTINATION "${WORK}/velmora")
set(ENV{VELMORA_EXAMPLES} "${SOURCE}/examples")
set(ENV{PYTHONDONTWRITEBYTECODE} 1)
set(ENV{PROJ_DATA} /usr/share/proj)  # pyproj does not look outside the environment
unset(ENV{PYTHONPATH})
set(run WORKING_DIRECTORY "${WORK}/python" COMMAND_ERROR_IS_FATAL ANY)
set(python "${WORK}/venv/bin/python")
set(offline --quiet --disable-pip-version-check --no-index --no-deps)

execute_process(COMMAND /usr/bin/python3 -m venv --system-site-packages --without-pip "${WORK}/venv" ${run})
set(ENV{VELMORA_LIBRARY} "${LIBRARY}")
execute_process(COMMAND "${python}" -m pip wheel ${offline} --no-build-isolation -w "${WORK}" . ${run})
unset(ENV{VELMORA_LIBRARY})
file(GLOB wheels "${WORK}/velmora-*-py3-none-*.whl")
execute_process(COMMAND "${python}" -m pip install ${offline} ${wheels} ${run})
# Only what was installed from here on.
file(REMOVE_RECURSE "${WORK}/python/velmora" "${WORK}/python/build")
execute_process(COMMAND "${python}" -m unittest discover -s tests ${run})
foreach(what "-p;velmora" examples tests)
  execute_process(COMMAND "${python}" -m mypy --python-executable "${python}" --cache-dir "${WORK}/mypy" ${what} ${run})
endforeach()
