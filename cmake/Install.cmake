# What cmake --install puts where the system looks for it, in the components program, window, library,
# development and python. Everything that is loaded or run from within lies in a folder of its own below
# that of the libraries; where it is, is found from where the asking file lies, so that a tree may be
# unpacked and used anywhere. Cross builds and instrumented ones are not installed.
if(CMAKE_CROSSCOMPILING OR FENDRA_INSTRUMENT)
  return()
endif()

set(FENDRA_PYTHON_DIR lib/python3/dist-packages CACHE PATH "Folder of the Python package fendra")
set(own ${CMAKE_INSTALL_LIBDIR}/fendra)

# fendra_find_own(TARGET FOLDER): the target is installed in FOLDER, and finds there what lies in our own.
function(fendra_find_own target folder)
  file(RELATIVE_PATH path /${folder} /${own})
  set_target_properties(${target} PROPERTIES INSTALL_RPATH $ORIGIN/${path})
endfunction()

fendra_find_own(fendra ${CMAKE_INSTALL_BINDIR})
install(TARGETS fendra RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
get_property(parts GLOBAL PROPERTY FENDRA_PARTS)
install(TARGETS fendra_module host kernels platform ${parts}
  RUNTIME DESTINATION ${own} COMPONENT library
  LIBRARY DESTINATION ${own} COMPONENT library)
set(installed fendra fendra_module host kernels platform ${parts})

# The program's own words, as the manual page and as what each shell takes.
set(texts ${PROJECT_BINARY_DIR}/texts)
file(MAKE_DIRECTORY ${texts})
add_custom_command(
  OUTPUT ${texts}/fendra.1 ${texts}/fendra ${texts}/_fendra ${texts}/fendra.fish
  COMMAND fendra manual > ${texts}/fendra.1
  COMMAND fendra completion bash > ${texts}/fendra
  COMMAND fendra completion zsh > ${texts}/_fendra
  COMMAND fendra completion fish > ${texts}/fendra.fish
  DEPENDS fendra VERBATIM)
add_custom_target(texts DEPENDS ${texts}/fendra.1)
list(APPEND installed texts)
install(FILES ${texts}/fendra.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
install(FILES ${texts}/fendra
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT program)
install(FILES ${texts}/_fendra DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT program)
install(FILES ${texts}/fendra.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT program)

# fendra_licences(COMPONENT NAME PACKAGE...): our licence, and those of the packages of Debian whose
# headers are compiled in, in the folder of documents of that name.
function(fendra_licences component name)
  set(folder ${CMAKE_INSTALL_DATADIR}/doc/${name})
  install(FILES LICENSE DESTINATION ${folder} COMPONENT ${component})
  foreach(package IN LISTS ARGN)
    install(FILES /usr/share/doc/${package}/copyright
      DESTINATION ${folder}/licences RENAME ${package}.txt COMPONENT ${component} OPTIONAL)
  endforeach()
endfunction()

fendra_licences(program fendra libcli11-dev libfmt-dev nlohmann-json3-dev)
fendra_licences(library libfendra1 libcli11-dev libfmt-dev nlohmann-json3-dev)

if(TARGET fendra_window)
  list(APPEND installed fendra_window)
  install(TARGETS fendra_window LIBRARY DESTINATION ${own} COMPONENT window)
  install(FILES packaging/fendra.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT window)
  install(FILES packaging/fendra.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT window)
  # The window is under another licence than all else.
  install(FILES docs/package/window-part.txt /usr/share/common-licenses/GPL-3
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/fendra-window COMPONENT window)
  fendra_licences(window fendra-window libqcustomplot-dev libfmt-dev)
endif()

# What programs in C and C++ need is installed by library/.
if(TARGET fendra_library)
  list(APPEND installed fendra_library)
  fendra_licences(development libfendra-dev)
endif()

if(TARGET fendra_python)
  list(APPEND installed fendra_python)
  fendra_find_own(fendra_python ${FENDRA_PYTHON_DIR}/fendra)
  install(TARGETS fendra_python LIBRARY DESTINATION ${FENDRA_PYTHON_DIR}/fendra COMPONENT python)
  install(DIRECTORY python/fendra/ DESTINATION ${FENDRA_PYTHON_DIR}/fendra COMPONENT python
    FILES_MATCHING PATTERN *.py PATTERN *.pyi PATTERN py.typed PATTERN __pycache__ EXCLUDE)
  fendra_licences(python python3-fendra libcli11-dev libfmt-dev nlohmann-json3-dev pybind11-dev)
endif()

# All that is installed: cmake --build --target installed.
add_custom_target(installed ALL)
add_dependencies(installed ${installed})
