# The package: each file of tests is one of ctest. What needs SciPy, pandas or matplotlib is left out where
# these are not there.
set(python ${Python3_EXECUTABLE})
if(NOT python)
  set(python /usr/bin/python3)
endif()
set(environment
  PYTHONPATH=${PROJECT_BINARY_DIR}/python PYTHONDONTWRITEBYTECODE=1 LC_ALL=C.UTF-8
  FENDRA=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/fendra BUILD=${PROJECT_BINARY_DIR})
execute_process(COMMAND ${python} -c "import numpy" RESULT_VARIABLE withoutNumpy OUTPUT_QUIET ERROR_QUIET)
if(NOT withoutNumpy)
  foreach(name IN ITEMS arguments bits documents memory process wheel)
    add_test(NAME python.${name} COMMAND ${python} -m unittest test_${name}
      WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/python)
    set_tests_properties(python.${name} PROPERTIES ENVIRONMENT "${environment}")
  endforeach()
endif()
execute_process(COMMAND ${python} -m mypy --version RESULT_VARIABLE withoutMypy OUTPUT_QUIET ERROR_QUIET)
if(NOT withoutMypy AND NOT withoutNumpy)
  add_test(NAME python.types
    COMMAND ${python} -m mypy --strict --cache-dir ${PROJECT_BINARY_DIR}/mypy
      ${PROJECT_BINARY_DIR}/python/fendra ${CMAKE_CURRENT_SOURCE_DIR}/python/typed.py)
  set_tests_properties(python.types PROPERTIES ENVIRONMENT "MYPYPATH=${PROJECT_BINARY_DIR}/python")
endif()
