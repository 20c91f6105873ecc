# One runtime of C++ for all that links platform, on Windows: the library fendra-runtime, which is the
# compiler's static runtime in whole. Were it linked into each library by itself, each would have an
# unwinder of its own, and on 32 bits no exception could leave the library that throws it. The
# compiler's own libraries would do as well, but a host's process may hold others of their names.
set(folder ${PROJECT_BINARY_DIR}/runtime)
file(MAKE_DIRECTORY ${folder})
set(parts "")
foreach(part stdc++ gcc_eh winpthread)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=lib${part}.a
    OUTPUT_VARIABLE archive OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  # The linker exports nothing of an archive whose name it knows for the compiler's.
  configure_file(${archive} ${folder}/whole-${part}.a COPYONLY)
  list(APPEND parts ${folder}/whole-${part}.a)
endforeach()
# For programs of an older ABI; it asks for the dynamic threads.
execute_process(COMMAND ${CMAKE_AR} d ${folder}/whole-stdc++.a compatibility-condvar.o
  COMMAND_ERROR_IS_FATAL ANY)

file(CONFIGURE OUTPUT ${folder}/runtime.cpp CONTENT "// Everything is in the archives.\n")
add_library(runtime SHARED ${folder}/runtime.cpp)
target_link_options(runtime PRIVATE -s LINKER:--export-all-symbols)
target_link_libraries(runtime PRIVATE -Wl,--whole-archive ${parts} -Wl,--no-whole-archive)
# By this name, in a folder that is searched first, the import library takes the place of the archive
# that the compiler links at the end of each line.
set_target_properties(runtime PROPERTIES OUTPUT_NAME fendra-runtime
  ARCHIVE_OUTPUT_NAME stdc++ IMPORT_PREFIX lib IMPORT_SUFFIX .a ARCHIVE_OUTPUT_DIRECTORY ${folder})
target_link_directories(runtime INTERFACE ${folder})
# On 32 bits each library tells the unwinder of its frames, by a function that the compiler's startup
# code takes only where somebody else has asked for it.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_link_options(runtime INTERFACE LINKER:-u,___register_frame_info,-u,___deregister_frame_info)
endif()
