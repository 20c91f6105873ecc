# The command cases for a program that an emulator runs: the driver and the shell are those of the
# machine that builds, and the word fendra in a case is a script beside the driver that starts the
# program. What a case needs beyond that stands in its golden file.
set(driver ${programs}/command-tests)
if(WIN32)
  # In the locale C the program would know no letters but those of ASCII under Wine.
  set(start "[ $LC_ALL != C ] || LC_ALL=C.UTF-8\nexec '${CMAKE_CROSSCOMPILING_EMULATOR}'")
  set(lacks linux)
else()
  # What lies beside the script, or its copy in another folder, takes the place of what is beside the
  # program.
  set(start "exec '${CMAKE_CROSSCOMPILING_EMULATOR}' -E LD_LIBRARY_PATH=\"\${0%/*}\"")
  set(lacks native)
  foreach(library fendra.so libfendra.so.1 libfendra-kernels.so libplatform.so libtavrelin.so
      adder.so lacks-exports.so makes-none.so presses-button.so)
    file(CREATE_LINK ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${library} ${programs}/${library} SYMBOLIC)
  endforeach()
endif()
file(CONFIGURE OUTPUT ${programs}/fendra @ONLY CONTENT
  "#!/bin/sh\n@start@ '@CMAKE_RUNTIME_OUTPUT_DIRECTORY@/fendra@CMAKE_EXECUTABLE_SUFFIX@' \"$@\"\n")
file(CHMOD ${programs}/fendra PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

find_program(nativeCompiler g++ REQUIRED)
set(source ${PROJECT_SOURCE_DIR}/tests/commands/CommandTest.cpp)
add_custom_command(OUTPUT ${driver}
  COMMAND ${nativeCompiler} -std=c++20 -I ${PROJECT_BINARY_DIR}/include/tests ${source}
    -lgtest_main -lgtest -o ${driver}
  DEPENDS ${source} ${PROJECT_SOURCE_DIR}/tests/support/TemporaryFolder.h VERBATIM)
add_custom_target(command-tests ALL DEPENDS ${driver})
add_dependencies(command-tests fendra)
# Half of the cases in each, for two to run at once.
foreach(half 0 1)
  add_test(NAME commands.${half} COMMAND ${driver} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}/tests/commands)
  set(environment ${wineEnvironment} FENDRA_LACKS=${lacks} GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=${half})
  set_tests_properties(commands.${half} PROPERTIES ENVIRONMENT "${environment}" ${wineFixture} COST 1000
    FAIL_REGULAR_EXPRESSION " 0 tests from")
endforeach()
