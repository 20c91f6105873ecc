# GoogleTest: as a library where there is one for the target, else built from the sources that Debian
# ships (package googletest).
find_package(GTest QUIET)
set(sources /usr/src/googletest)
if(NOT GTest_FOUND AND EXISTS ${sources}/CMakeLists.txt)
  set(BUILD_GMOCK OFF)
  set(INSTALL_GTEST OFF)
  # Its minimum of CMake is older than the policy that lets these two variables count.
  set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
  add_subdirectory(${sources} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
