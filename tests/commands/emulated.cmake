# The command cases for the program built for Windows: the driver and the shell are those of the
# machine that builds, and the word fendra in a case is a script beside the driver that runs the
# program under Wine, which in the locale C would know no letters but those of ASCII. What a case needs
# beyond that stands in its golden file.
set(folder ${PROJECT_BINARY_DIR}/native)
set(driver ${folder}/command-tests)
file(CONFIGURE OUTPUT ${folder}/fendra @ONLY CONTENT
  "#!/bin/sh\n[ $LC_ALL != C ] || LC_ALL=C.UTF-8\nexec '@CMAKE_CROSSCOMPILING_EMULATOR@' '@CMAKE_RUNTIME_OUTPUT_DIRECTORY@/fendra.exe' \"$@\"\n")
file(CHMOD ${folder}/fendra PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

find_program(nativeCompiler g++ REQUIRED)
set(source ${PROJECT_SOURCE_DIR}/tests/commands/CommandTest.cpp)
add_custom_command(OUTPUT ${driver}
  COMMAND ${nativeCompiler} -std=c++20 -I ${PROJECT_BINARY_DIR}/include/tests ${source}
    -lgtest_main -lgtest -o ${driver}
  DEPENDS ${source} ${PROJECT_SOURCE_DIR}/tests/support/TemporaryFolder.h VERBATIM)
add_custom_target(command-tests ALL DEPENDS ${driver})
add_dependencies(command-tests fendra)
add_test(NAME commands COMMAND ${driver} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}/tests/commands)
set_tests_properties(commands PROPERTIES
  ENVIRONMENT "${wineEnvironment};FENDRA_LACKS=linux" FIXTURES_REQUIRED wine
  FAIL_REGULAR_EXPRESSION " 0 tests from")
