# What ./package packs: one folder that runs from where it is unpacked, the libraries beside the
# program, with a read-me in the manner of the system and the licences of all that is compiled in.
set(system linux)
set(lineEnds LF)
set(copyrights libcli11-dev libfmt-dev nlohmann-json3-dev)
set(packed fendra fendra_module host kernels platform)
if(WIN32)
  set(system windows)
  set(lineEnds CRLF)
  list(APPEND copyrights gcc-mingw-w64-base libz-mingw-w64-dev mingw-w64-common)
  list(APPEND packed runtime sndfile)
endif()
math(EXPR bits "8 * ${CMAKE_SIZEOF_VOID_P}")
set(target ${system}${bits})
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
  set(target ${system}-arm64)
  set(onProcessor " on ARM")
endif()
set(folder fendra-${PROJECT_VERSION}-${target})
if(TARGET fendra_window)  # which is under another licence than all else
  list(APPEND packed fendra_window)
  list(APPEND copyrights libqcustomplot-dev)
  install(FILES docs/package/window-part.txt /usr/share/common-licenses/GPL-3
    DESTINATION ${folder}/licences COMPONENT package EXCLUDE_FROM_ALL)
endif()
get_property(parts GLOBAL PROPERTY FENDRA_PARTS)
list(APPEND packed ${parts})

install(TARGETS ${packed}
  RUNTIME DESTINATION ${folder} COMPONENT package EXCLUDE_FROM_ALL
  LIBRARY DESTINATION ${folder} COMPONENT package EXCLUDE_FROM_ALL
  ARCHIVE EXCLUDE_FROM_ALL COMPONENT import)
# Here the program finds its libraries beside itself, and not where cmake/Install.cmake puts them.
get_target_property(installedPath fendra INSTALL_RPATH)
if(NOT installedPath STREQUAL CMAKE_INSTALL_RPATH)
  install(CODE "file(RPATH_CHANGE FILE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${folder}/fendra\"
    OLD_RPATH \"${installedPath}\" NEW_RPATH \"${CMAKE_INSTALL_RPATH}\")" COMPONENT package EXCLUDE_FROM_ALL)
endif()
set(readme ${PROJECT_BINARY_DIR}/readme)
# The read-me of the system tells by this what the target has and lacks. Its line ends come last.
set(about docs/package/${target}.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${about})
file(READ ${about} about)
configure_file(docs/package/${system}.txt ${readme}/draft.txt @ONLY)
configure_file(${readme}/draft.txt ${readme}/README.txt @ONLY NEWLINE_STYLE ${lineEnds})
configure_file(LICENSE ${readme}/LICENSE.txt @ONLY NEWLINE_STYLE ${lineEnds})
install(FILES ${readme}/README.txt ${readme}/LICENSE.txt DESTINATION ${folder} COMPONENT package EXCLUDE_FROM_ALL)
install(FILES samples/xrf-spectrum.csv samples/xrf-zero-peak.csv
  DESTINATION ${folder}/samples COMPONENT package EXCLUDE_FROM_ALL)
install(FILES samples/licences/pymca-mit.txt
  DESTINATION ${folder}/licences RENAME samples.txt COMPONENT package EXCLUDE_FROM_ALL)
# What is built from sources of Debian has its licences there, in full.
if(WIN32)
  set(licences_libsndfile debian/copyright COPYING src/ALAC/LICENSE)
  set(licences_flac debian/copyright COPYING.Xiph)
  foreach(package libsndfile flac)
    file(WRITE ${readme}/${package}.txt "")
    foreach(text IN LISTS licences_${package})
      file(READ ${PROJECT_SOURCE_DIR}/build/sources/${package}/${text} licence)
      file(APPEND ${readme}/${package}.txt "${licence}\n")
    endforeach()
    install(FILES ${readme}/${package}.txt DESTINATION ${folder}/licences COMPONENT package EXCLUDE_FROM_ALL)
  endforeach()
endif()
foreach(package IN LISTS copyrights)
  install(FILES /usr/share/doc/${package}/copyright
    DESTINATION ${folder}/licences RENAME ${package}.txt COMPONENT package EXCLUDE_FROM_ALL)
endforeach()
