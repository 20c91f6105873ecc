# CLI11, fmt and nlohmann-json. Debian has them for its own architecture; they are, or can be, headers
# alone, so a cross build takes these, and nothing else from /usr/include, through links.
if(NOT WIN32)
  find_package(CLI11 REQUIRED)
  find_package(fmt REQUIRED)
  find_package(nlohmann_json REQUIRED)
  return()
endif()

# header_library(TARGET FOLDER): the headers of one folder as an imported target.
function(header_library target folder)
  if(NOT IS_DIRECTORY /usr/include/${folder})
    message(FATAL_ERROR "The headers of ${target} are not in /usr/include/${folder}: install Debian's "
      "libcli11-dev, libfmt-dev and nlohmann-json3-dev")
  endif()
  set(root ${PROJECT_BINARY_DIR}/include/${folder})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK /usr/include/${folder} ${root}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} INTERFACE ${root})
endfunction()
header_library(CLI11::CLI11 CLI)
header_library(fmt::fmt fmt)
header_library(nlohmann_json::nlohmann_json nlohmann)
target_compile_definitions(fmt::fmt INTERFACE FMT_HEADER_ONLY)
