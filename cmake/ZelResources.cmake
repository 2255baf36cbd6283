# Resources that a library carries, as OS_ResourceManager reads them.

# zel_resources(<target> <type> <file>...): the target carries each file, named by its title, as a resource of the type.
function(zel_resources target type)
  foreach(file IN LISTS ARGN)
    get_filename_component(name ${file} NAME_WE)
    if(WIN32)
      zel_system_resource(${target} ${type} ${name} ${file})
      continue()
    endif()
    set(source ${CMAKE_CURRENT_BINARY_DIR}/resources/${type}_${name}.cpp)
    add_custom_command(OUTPUT ${source}
      COMMAND ${CMAKE_COMMAND} -DINPUT=${file} -DOUTPUT=${source} -DSYMBOL=zel_resource_${type}_${name}
              -P ${PROJECT_SOURCE_DIR}/cmake/EmbedResource.cmake
      DEPENDS ${file} ${PROJECT_SOURCE_DIR}/cmake/EmbedResource.cmake
      COMMENT "Embedding ${name}"
      VERBATIM)
    target_sources(${target} PRIVATE ${source})
  endforeach()
endfunction()

# The same as one of the system's own resources, which have names in capitals and are found whatever the case.
function(zel_system_resource target type name file)
  string(TOUPPER "${name}" resource)
  string(TOUPPER "${type}" kind)
  set(script ${CMAKE_CURRENT_BINARY_DIR}/resources/${type}_${name}.rc)
  file(CONFIGURE OUTPUT ${script} CONTENT "${resource} ${kind} \"${file}\"\n")
  set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS ${file} LANGUAGE RC)
  target_sources(${target} PRIVATE ${script})
endfunction()

# zel_dictionaries(<name> <folder>): the build has the folder's dictionaries where an installed tree has them, in
# share/<name>/locale beside bin, so that programs find them in both. The target is <name>_dictionaries.
function(zel_dictionaries name folder)
  file(GLOB dictionaries CONFIGURE_DEPENDS ${folder}/*.json)
  set(copies)
  foreach(dictionary IN LISTS dictionaries)
    get_filename_component(file ${dictionary} NAME)
    set(copy ${CMAKE_BINARY_DIR}/share/${name}/locale/${file})
    add_custom_command(OUTPUT ${copy} COMMAND ${CMAKE_COMMAND} -E copy ${dictionary} ${copy} DEPENDS ${dictionary}
                       COMMENT "Copying ${name}'s ${file}" VERBATIM)
    list(APPEND copies ${copy})
  endforeach()
  add_custom_target(${name}_dictionaries ALL DEPENDS ${copies})
endfunction()
