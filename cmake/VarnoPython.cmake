# Whether the Python package is built: where pybind11 and the headers of Python are.

# The distribution's Python, whose packages pybind11 and NumPy are; another one where Python_EXECUTABLE names it.
if(NOT DEFINED Python_EXECUTABLE AND EXISTS /usr/bin/python3)
  set(Python_EXECUTABLE /usr/bin/python3)
endif()
find_package(Python 3.11 QUIET COMPONENTS Interpreter Development.Module)
find_package(pybind11 2.10 QUIET)
set(VARNO_PYTHON_FOUND OFF)
if(Python_Development.Module_FOUND AND pybind11_FOUND)
  set(VARNO_PYTHON_FOUND ON)
endif()
option(VARNO_PYTHON "Build the Python package" ${VARNO_PYTHON_FOUND})
if(VARNO_PYTHON AND NOT VARNO_PYTHON_FOUND)
  message(FATAL_ERROR "The Python package needs pybind11 from 2.10 on and the headers of Python from 3.11 on "
    "(packages pybind11-dev, python3-dev)")
endif()
