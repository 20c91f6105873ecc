# Layers: one target per folder, and what each may include.

set(FENDRA_INSTRUMENT "" CACHE STRING "Compile and link options of an instrumented build")
set(FENDRA_GUIDE "" CACHE STRING "Compile options of what a fuzzer learns from: the readers, and what feeds them")

# Options of every target. Without contraction and reassociation a sum is the sum that is written.
add_library(fendra_options INTERFACE)
# Files of more than 2 GiB on 32 bits, too.
target_compile_definitions(fendra_options INTERFACE _FILE_OFFSET_BITS=64)
target_compile_options(fendra_options INTERFACE
  -ffp-contract=off
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wcast-qual
  -Wdouble-promotion -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual -Wsuggest-override -Werror
  ${FENDRA_INSTRUMENT})
target_link_options(fendra_options INTERFACE ${FENDRA_INSTRUMENT})

# Headers take most of the time to compile, above all those of the command line and of Python. Stages that
# build everything anew compile the sources of a layer as few, but for the kernels; what people run is built
# source by source except for the rooms of commands, so that one which lacks an include is found.
option(FENDRA_JOINED "Whether the sources of each layer are compiled as few" OFF)
option(FENDRA_APART "Whether every source is compiled by itself" OFF)

# fendra_layer(FOLDER KIND SOURCE...): the folder, named from the project's root, as a target; that of
# workbench/files/text is workbench_files_text.
#
# The include root of a layer holds a link to its own folder and nothing else, so a source sees the
# headers of the layers that its target links, and a forbidden include does not compile. A folder with
# layers of their own below it shows its own headers alone.
function(fendra_layer folder kind)
  string(REPLACE "/" "_" name ${folder})
  add_library(${name} ${kind} ${ARGN})
  fendra_show(${name} ${folder})
  target_link_libraries(${name} PRIVATE fendra_options)
  if(NOT FENDRA_APART AND (folder MATCHES "^(python/extension|workbench/(calls|commands|terminal))$" OR
      (FENDRA_JOINED AND NOT folder MATCHES "^kernels")))
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
  endif()
  set(options "")
  if(folder MATCHES "^(platform|host|frame|workbench/(files|parts)(/.*)?)$")
    list(APPEND options ${FENDRA_GUIDE})
  endif()
  if(folder MATCHES "^workbench/(batch|calls|commands|reporting|terminal)$")
    list(APPEND options ${FENDRA_PASSING_ON})
  endif()
  target_compile_options(${name} PRIVATE ${options})
  if(folder MATCHES "^workbench/" AND NOT FENDRA_APART)
    fendra_commonHeaders(${name} "${options}")
  endif()
endfunction()

# Options of what passes on what others compute. It is optimised less, and compiles in about half the time.
# For Windows g++ would break objects that each thread has of its own.
set(FENDRA_PASSING_ON "")
if(FENDRA_INSTRUMENT)
  set(FENDRA_PASSING_ON $<$<CONFIG:Release>:-O0>)
elseif(NOT WIN32)
  set(FENDRA_PASSING_ON $<$<CONFIG:Release>:-O1>)
endif()

# The headers of other makers that most rooms of the workbench include are compiled once for all rooms with the
# same options, by the first of them. A source includes what it uses all the same, which a test holds.
set(FENDRA_COMMON_HEADERS algorithm cmath cstdint filesystem functional limits map memory optional string string_view
  utility vector fmt/format.h)
function(fendra_commonHeaders name options)
  target_link_libraries(${name} PRIVATE fmt::fmt)
  get_property(first GLOBAL PROPERTY "fendra_commonHeaders${options}")
  if(first)
    target_precompile_headers(${name} REUSE_FROM ${first})
  else()
    list(TRANSFORM FENDRA_COMMON_HEADERS REPLACE "(.+)" "<\\1>" OUTPUT_VARIABLE headers)
    target_precompile_headers(${name} PRIVATE ${headers})
    set_property(GLOBAL PROPERTY "fendra_commonHeaders${options}" ${name})
  endif()
endfunction()

# fendra_show(TARGET FOLDER): the headers of the folder, for all that link the target.
function(fendra_show name folder)
  set(source ${PROJECT_SOURCE_DIR}/${folder})
  set(root ${PROJECT_BINARY_DIR}/include/${name})
  file(REMOVE_RECURSE ${root})
  file(GLOB layersBelow CONFIGURE_DEPENDS ${source}/*/CMakeLists.txt)
  if(layersBelow)
    file(MAKE_DIRECTORY ${root}/${folder})
    file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${source} ${source}/*.h)
    foreach(header IN LISTS headers)
      file(CREATE_LINK ${source}/${header} ${root}/${folder}/${header} SYMBOLIC)
    endforeach()
  else()
    cmake_path(GET folder PARENT_PATH parent)
    file(MAKE_DIRECTORY ${root}/${parent})
    file(CREATE_LINK ${source} ${root}/${folder} SYMBOLIC)
  endif()
  get_target_property(kind ${name} TYPE)
  if(kind STREQUAL INTERFACE_LIBRARY)
    target_include_directories(${name} INTERFACE ${root})
  else()
    target_include_directories(${name} PUBLIC ${root})
  endif()
endfunction()

# fendra_rows(TARGET TYPE HEADER ROW...): a table whose rows are constants. The source spectral.cpp of a
# row spectral defines spectralMethod, where TYPE is Method; the header declares TYPE with its static
# operation all(), which gives pointers to the rows in the order named here. So a row is added by its
# source and by its name here.
function(fendra_rows target type header)
  set(sources ${ARGN})
  list(TRANSFORM sources APPEND ".cpp")
  set(declarations "")
  set(rows "")
  foreach(row IN LISTS ARGN)
    cmake_path(GET row FILENAME name)
    string(APPEND declarations "extern const ${type} ${name}${type};\n")
    list(APPEND rows "&${name}${type}")
  endforeach()
  list(JOIN rows ",\n        " rows)
  set(table ${CMAKE_CURRENT_BINARY_DIR}/${type}Rows.cpp)
  file(CONFIGURE OUTPUT ${table} CONTENT "#include \"@header@\"

@declarations@
const std::vector<const @type@*>& @type@::all() {
    static const std::vector<const @type@*> rows = {
        @rows@};
    return rows;
}
" @ONLY)
  target_sources(${target} PRIVATE ${table} ${sources})
endfunction()
