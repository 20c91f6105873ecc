# fendra_embed(TARGET FILE NAME [ROOT]): the bytes of FILE, which lies below ROOT or else in this folder,
# as the constant array NAME, declared in a header that sources of TARGET include as "FILE.h". The header
# is written anew whenever FILE changes.
function(fendra_embed target file name)
  set(root ${CMAKE_CURRENT_SOURCE_DIR} ${ARGN})
  list(GET root -1 root)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${root}/${file})
  file(READ ${root}/${file} digits HEX)
  string(REPEAT "[0-9a-f]" 32 line)
  string(REGEX REPLACE "(${line})" "\\1\n" digits ${digits})
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1, " bytes "${digits}")

  set(folder ${CMAKE_CURRENT_BINARY_DIR}/embedded)
  file(CONFIGURE OUTPUT ${folder}/${file}.h CONTENT
    "#pragma once\n\ninline constexpr unsigned char @name@[] = {\n@bytes@};\n" @ONLY)
  target_include_directories(${target} PRIVATE ${folder})
endfunction()
