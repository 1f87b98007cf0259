# add_version_resource(TARGET DESCRIPTION): gives a program the description and version that Explorer
# shows and installers read, and the manifest by which Windows chooses how to run it. Does nothing for
# systems without such resources.
function(add_version_resource target description)
  if(WIN32)
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    set(manifest ${CMAKE_CURRENT_BINARY_DIR}/${target}.manifest)
    configure_file(${CMAKE_SOURCE_DIR}/cmake/program.manifest.in ${manifest} @ONLY)
    configure_file(${CMAKE_SOURCE_DIR}/cmake/program.rc.in ${resource} @ONLY)
    set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS ${manifest})
    target_sources(${target} PRIVATE ${resource})
    if(MSVC)
      # The linker would add one of its own.
      target_link_options(${target} PRIVATE /MANIFEST:NO)
    endif()
  endif()
endfunction()

# add_message_table(TARGET MESSAGES): puts the texts of an .mc file into a program, from which event
# viewers read them.
function(add_message_table target messages)
  set(compile mc)
  if(MINGW)
    set(compile ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-windmc)
  endif()
  get_filename_component(stem ${messages} NAME_WE)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/messages)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${folder}/${stem}.rc ${folder}/MSG00409.bin
                     COMMAND ${compile} -h ${folder} -r ${folder} ${messages}
                     DEPENDS ${messages} VERBATIM)
  set_source_files_properties(${folder}/${stem}.rc PROPERTIES
                              OBJECT_DEPENDS ${folder}/MSG00409.bin INCLUDE_DIRECTORIES ${folder})
  target_sources(${target} PRIVATE ${folder}/${stem}.rc)
endfunction()
