# CLI11, fmt and nlohmann-json. Debian has them for its own architecture; they are headers alone, or have
# all they need in headers, so a build for Windows takes these, and nothing else from /usr/include, through
# links.
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

# Compiled once, for each source that includes fmt would compile the whole of it again.
if(NOT TARGET fmt_compiled)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/fmt.cpp CONTENT "#include <fmt/format-inl.h>

template fmt::detail::dragonbox::decimal_fp<float> fmt::detail::dragonbox::to_decimal(float);
template fmt::detail::dragonbox::decimal_fp<double> fmt::detail::dragonbox::to_decimal(double);
template fmt::detail::thousands_sep_result<char> fmt::detail::thousands_sep_impl(fmt::detail::locale_ref);
template char fmt::detail::decimal_point_impl(fmt::detail::locale_ref);
" @ONLY)
  add_library(fmt_compiled STATIC ${PROJECT_BINARY_DIR}/fmt.cpp)
  target_include_directories(fmt_compiled PRIVATE ${PROJECT_BINARY_DIR}/include/fmt)
endif()
target_link_libraries(fmt::fmt INTERFACE fmt_compiled)
