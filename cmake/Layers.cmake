# Layers: one target per folder, and what each may include.

set(FENDRA_INSTRUMENT "" CACHE STRING "Compile and link options of an instrumented build")

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

# fendra_layer(NAME KIND SOURCE...): the folder NAME as a target of that name.
#
# The include root of a layer holds a link to its own folder and nothing else, so a source sees the
# headers of the layers that its target links, and a forbidden include does not compile.
function(fendra_layer name kind)
  add_library(${name} ${kind} ${ARGN})
  set(root ${PROJECT_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${name} SYMBOLIC)
  target_include_directories(${name} PUBLIC ${root})
  target_link_libraries(${name} PRIVATE fendra_options)
endfunction()
