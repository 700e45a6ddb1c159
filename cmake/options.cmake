# What every target of ours is compiled with.
add_library(quorvel_options INTERFACE)
target_include_directories(quorvel_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(quorvel_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  $<$<BOOL:${QUORVEL_WERROR}>:-Werror>)
if(QUORVEL_SANITIZE)
  target_compile_definitions(quorvel_options INTERFACE QUORVEL_SANITIZED)
  target_compile_options(quorvel_options INTERFACE
    -fsanitize=${QUORVEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quorvel_options INTERFACE -fsanitize=${QUORVEL_SANITIZE})
  if(QUORVEL_FUZZ)
    # These check each use of a pointer, halve the executions per second, and find little that the
    # address sanitizer does not find. The preset asan has them.
    target_compile_options(quorvel_options INTERFACE
      -fno-sanitize=null,alignment,object-size,vptr,pointer-overflow)
  endif()
endif()
