# Include rights: what a layer may include is found, what it may not is not. A row is a layer, a header
# of it, and the layers that it may include beside itself. The program, which nothing includes, has no
# header.
set(target_workbench fendra)
set(target_workbench/window fendra_window)
set(target_library fendra_library)
set(rows
  "platform CString"
  "host B_BasisModule platform"
  "resources resources platform"
  "kernels convolution"
  "transform FourierTransform kernels"
  "matrix SquareMatrix kernels"
  "signal FoldEngine matrix transform kernels"
  "frame FoldModule host platform resources signal"
  "workbench/messages Failure"
  "workbench/analysis IterationCurve transform kernels workbench/messages"
  "workbench/system Console workbench/messages"
  "workbench/signals SignalReader workbench/messages workbench/system"
  "workbench/files/disk OutputFile workbench/messages workbench/system workbench/signals"
  "workbench/files/text TextReader workbench/messages workbench/system workbench/signals workbench/files/disk"
  "workbench/files/audio audio platform workbench/messages workbench/system workbench/signals workbench/files/disk"
  "workbench/files/array NpyReader workbench/messages workbench/system workbench/signals workbench/files/disk"
  "workbench/files/parts PartProgram workbench/messages workbench/system workbench/signals workbench/files/disk"
  "workbench/files/instrument UffReader workbench/messages workbench/system workbench/signals workbench/files/disk workbench/files/text workbench/files/array"
  "workbench/files signalFiles workbench/messages workbench/system workbench/signals workbench/files/disk workbench/files/text workbench/files/audio workbench/files/array workbench/files/parts workbench/files/instrument"
  "workbench/methods Setting workbench/messages"
  "workbench/module ModuleRun host platform workbench/messages workbench/system workbench/signals workbench/files/disk workbench/methods"
  "workbench/treatment Deconvolution host platform kernels workbench/messages workbench/analysis workbench/system workbench/signals workbench/methods workbench/module"
  "workbench/jobs RunRecord host platform transform kernels workbench/messages workbench/analysis workbench/treatment workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module"
  "workbench/figures Figure"
  "workbench/reporting figures host platform workbench/messages workbench/analysis workbench/treatment workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/jobs workbench/figures"
  "workbench/batch BatchRun host platform workbench/messages workbench/analysis workbench/treatment workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/jobs"
  "workbench/terminal help host platform workbench/messages workbench/analysis workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/treatment workbench/jobs workbench/batch"
  "workbench/calls FoldCall host platform workbench/messages workbench/analysis workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/treatment workbench/jobs workbench/batch workbench/terminal"
  "library fendra host platform workbench/messages workbench/analysis workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/treatment workbench/jobs workbench/batch workbench/terminal workbench/calls"
  "workbench/desktop windowExports host platform workbench/messages workbench/analysis workbench/treatment workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/jobs workbench/figures"
  "workbench/commands Command host platform workbench/messages workbench/analysis workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/treatment workbench/jobs workbench/batch workbench/figures workbench/reporting workbench/terminal workbench/desktop"
  "workbench/window text host platform workbench/messages workbench/analysis workbench/treatment workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/jobs workbench/figures workbench/desktop"
  "workbench/parts Part workbench/messages workbench/system workbench/signals"
  "workbench/parts/variables SampleRows workbench/messages workbench/system workbench/signals workbench/files/disk workbench/files/text"
  "workbench/parts/hdf5 - workbench/parts workbench/parts/variables workbench/messages workbench/system workbench/signals workbench/files/disk workbench/files/text"
  "workbench/parts/netcdf - workbench/parts workbench/parts/variables workbench/messages workbench/system workbench/signals workbench/files/disk workbench/files/text"
  "workbench/parts/mat - workbench/parts workbench/messages workbench/system workbench/signals"
  "workbench/parts/edf EdfReader workbench/parts workbench/messages workbench/system workbench/signals"
  "workbench/parts/mseed MseedReader workbench/parts workbench/messages workbench/system workbench/signals"
  "workbench - host platform workbench/messages workbench/system workbench/signals workbench/files workbench/files/disk workbench/methods workbench/module workbench/analysis workbench/treatment workbench/jobs workbench/batch workbench/terminal workbench/commands")

foreach(row IN LISTS rows)
  separate_arguments(words UNIX_COMMAND ${row})
  list(POP_FRONT words layer header)
  list(APPEND layers ${layer})
  if(NOT header STREQUAL "-")
    set(header_${layer} ${layer}/${header}.h)
  endif()
  set(rights_${layer} ${layer} ${words})
endforeach()
foreach(layer IN LISTS layers)
  string(REPLACE "/" "_" target ${layer})
  if(DEFINED target_${layer})
    set(target ${target_${layer}})
  endif()
  if(NOT TARGET ${target})  # no Qt, no windows; no library, no part
    continue()
  endif()
  set(lines "")
  foreach(other IN LISTS layers)
    set(header ${header_${other}})
    if(NOT header)
      continue()
    endif()
    if(other IN_LIST rights_${layer})
      string(APPEND lines "#if !__has_include(\"${header}\")\n#error does not find ${header}\n#endif\n")
    else()
      string(APPEND lines "#if __has_include(\"${header}\")\n#error may not find ${header}\n#endif\n")
    endif()
  endforeach()
  set(probe ${CMAKE_CURRENT_BINARY_DIR}/rights/${target}.cpp)
  file(CONFIGURE OUTPUT ${probe} CONTENT "${lines}")
  add_test(NAME rights.${layer}
    COMMAND ${CMAKE_CXX_COMPILER} -std=c++20 -fsyntax-only
      "-I$<JOIN:$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>,;-I>" ${probe}
    COMMAND_EXPAND_LISTS)
endforeach()
