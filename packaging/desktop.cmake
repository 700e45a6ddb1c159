# The program, and what desktops want to know of it.
list(APPEND programs quorvel quorvel_sound resources icons)
quorvel_man_page(quorvel)
configure_file(quorvel.desktop.in ${QUORVEL_APPLICATION_ID}.desktop @ONLY)
configure_file(quorvel.metainfo.xml.in ${QUORVEL_APPLICATION_ID}.metainfo.xml @ONLY)

# The icons lie to the built program as they lie to the installed program.
set(icons)
set(built_icons ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${QUORVEL_ICONS_FOLDER})
find_program(QUORVEL_RSVG_CONVERT rsvg-convert REQUIRED)
function(quorvel_icon drawing side)
  set(source ${PROJECT_SOURCE_DIR}/resources/icons/${drawing}.svg)
  set(icon ${built_icons}/${side}x${side}/apps/${QUORVEL_APPLICATION_ID}.png)
  cmake_path(GET icon PARENT_PATH folder)
  add_custom_command(OUTPUT ${icon}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${QUORVEL_RSVG_CONVERT} --width ${side} --height ${side} --output ${icon} ${source}
    DEPENDS ${source} VERBATIM)
  set(icons ${icons} ${icon} PARENT_SCOPE)
endfunction()
foreach(side 16 22 24)
  quorvel_icon(quorvel-small ${side})
endforeach()
foreach(side 32 48 64 128 256 512)
  quorvel_icon(quorvel ${side})
endforeach()
add_custom_target(icons ALL DEPENDS ${icons})

if(APPLE)
  include(macos.cmake)
  return()
endif()

install(TARGETS quorvel)
install(TARGETS quorvel_sound DESTINATION ${modules_folder})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/TEXT ${PROJECT_SOURCE_DIR}/resources/PICT
                  ${PROJECT_SOURCE_DIR}/resources/snd DESTINATION ${resources_folder})
install(DIRECTORY ${built_icons}/ DESTINATION ${icons_folder} FILES_MATCHING PATTERN "*.png")
install(FILES ${PROJECT_SOURCE_DIR}/resources/icons/quorvel.svg
  DESTINATION ${icons_folder}/scalable/apps RENAME ${QUORVEL_APPLICATION_ID}.svg)
install(FILES ${made}/${QUORVEL_APPLICATION_ID}.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${made}/${QUORVEL_APPLICATION_ID}.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
