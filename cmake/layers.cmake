# quorvel_layer(TARGET INCLUDES...): fails the build of TARGET when one of its own sources includes
# a quoted header outside the given folders of src/. So arrows point down, or nothing is built.
function(quorvel_layer target)
  get_target_property(sources ${target} SOURCES)
  get_target_property(folder ${target} SOURCE_DIR)
  list(TRANSFORM sources PREPEND ${folder}/)
  string(REPLACE ";" "," sources "${sources}")
  string(REPLACE ";" "|" allowed "${ARGN}")
  add_custom_target(${target}_layer
    COMMAND ${CMAKE_COMMAND} -DSOURCES=${sources} "-DALLOWED=${allowed}"
            -P ${PROJECT_SOURCE_DIR}/cmake/check_layer.cmake
    COMMENT "Checking what ${target} includes"
    VERBATIM)
  add_dependencies(${target} ${target}_layer)
endfunction()
