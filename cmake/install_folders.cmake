# Where an install puts the files, and the ways from the program to its files: an installed tree may
# be moved as a whole. In a macOS bundle the files lie beside the program's folder.
include(GNUInstallDirs)

set(modules_folder ${CMAKE_INSTALL_LIBDIR}/quorvel/modules)
set(resources_folder ${CMAKE_INSTALL_DATADIR}/quorvel/resources)
set(icons_folder ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(name modules resources icons)
  cmake_path(ABSOLUTE_PATH ${name}_folder BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
    OUTPUT_VARIABLE folder)
  string(TOUPPER QUORVEL_${name}_FOLDER variable)
  file(RELATIVE_PATH ${variable} ${CMAKE_INSTALL_FULL_BINDIR} ${folder})
endforeach()
if(APPLE)
  set(QUORVEL_MODULES_FOLDER ../PlugIns)
  set(QUORVEL_RESOURCES_FOLDER ../Resources)
endif()
