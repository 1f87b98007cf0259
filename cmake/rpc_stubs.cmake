# add_rpc_stubs(TARGET SIDE IDL): adds the stubs for one side of x.idl, server or client, to a target,
# and their header x_rpc.h. Names of server functions begin with Serve_, those of the client with
# Call_.
function(add_rpc_stubs target side idl)
  get_filename_component(stem ${idl} NAME_WE)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/rpc_${stem}_${side})
  file(MAKE_DIRECTORY ${folder})
  if(MSVC)
    set(other_side client)
    if(side STREQUAL "client")
      set(other_side server)
    endif()
    set(compile midl /nologo /env x64 /robust /Oicf /prefix client Call_ server Serve_
                /h ${stem}_rpc.h /${other_side} none /out ${folder} ${idl})
  else()
    set(widl ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-widl)
    string(SUBSTRING ${side} 0 1 kind)
    set(compile ${widl} -m64 -Oicf -robust --prefix-client=Call_ --prefix-server=Serve_
                -H ${stem}_rpc.h -h -${kind} ${idl})
  endif()
  string(SUBSTRING ${side} 0 1 letter)
  set(stubs ${folder}/${stem}_${letter}.c)
  add_custom_command(OUTPUT ${folder}/${stem}_rpc.h ${stubs} COMMAND ${compile}
                     WORKING_DIRECTORY ${folder} DEPENDS ${idl} VERBATIM)
  if(NOT MSVC)
    # Warnings about generated code help nobody.
    set_source_files_properties(${stubs} PROPERTIES COMPILE_OPTIONS -w)
  endif()
  target_sources(${target} PRIVATE ${stubs} ${folder}/${stem}_rpc.h)
  target_include_directories(${target} SYSTEM PUBLIC ${folder})
  target_link_libraries(${target} PUBLIC rpcrt4)
endfunction()
