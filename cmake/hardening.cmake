# What Debian compiles and links its packages with against faults of memory, for g++ and clang, in
# every preset; the checks of the C library's functions need an optimised build, and are left out
# beside the sanitizers, which bring checks of their own.
set(in_library $<IN_LIST:$<TARGET_PROPERTY:TYPE>,MODULE_LIBRARY$<SEMICOLON>SHARED_LIBRARY>)
target_compile_options(quorvel_options INTERFACE
  -fstack-protector-strong -Wformat -Werror=format-security
  $<IF:${in_library},-fPIC,-fPIE>)
if(NOT QUORVEL_SANITIZE)
  target_compile_options(quorvel_options INTERFACE
    $<$<CONFIG:Release>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
endif()
if(NOT APPLE)
  target_link_options(quorvel_options INTERFACE
    -Wl,-z,relro,-z,now $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)
endif()

# The same bytes from every folder: no name of the folder reaches what users get.
target_compile_options(quorvel_options INTERFACE
  $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)
