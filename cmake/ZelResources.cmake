# Resources that a library carries, as OS_ResourceManager reads them.

# zel_resources(<target> <type> <file>...): the target carries each file, named by its title, as a resource of the type.
function(zel_resources target type)
  foreach(file IN LISTS ARGN)
    get_filename_component(name ${file} NAME_WE)
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
