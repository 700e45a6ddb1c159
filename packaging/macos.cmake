# The bundle for macOS. Nobody has tried the bundle yet; docs/packaging.md says so too.
set(iconset ${made}/quorvel.iconset)
set(copies)
foreach(side 16 32 128 256 512)
  list(APPEND copies COMMAND ${CMAKE_COMMAND} -E copy
    ${built_icons}/${side}x${side}/apps/${QUORVEL_APPLICATION_ID}.png
    ${iconset}/icon_${side}x${side}.png)
endforeach()
add_custom_command(OUTPUT ${made}/quorvel.icns
  COMMAND ${CMAKE_COMMAND} -E make_directory ${iconset} ${copies}
  COMMAND iconutil --convert icns --output ${made}/quorvel.icns ${iconset}
  DEPENDS ${icons} VERBATIM)

file(GLOB_RECURSE bundled RELATIVE ${PROJECT_SOURCE_DIR}/resources
     ${PROJECT_SOURCE_DIR}/resources/TEXT/* ${PROJECT_SOURCE_DIR}/resources/PICT/*
     ${PROJECT_SOURCE_DIR}/resources/snd/*)
foreach(file IN LISTS bundled)
  cmake_path(GET file PARENT_PATH folder)
  target_sources(quorvel PRIVATE ${PROJECT_SOURCE_DIR}/resources/${file})
  set_source_files_properties(${PROJECT_SOURCE_DIR}/resources/${file}
    TARGET_DIRECTORY quorvel PROPERTIES MACOSX_PACKAGE_LOCATION Resources/${folder})
endforeach()
target_sources(quorvel PRIVATE ${made}/quorvel.icns)
set_source_files_properties(${made}/quorvel.icns
  TARGET_DIRECTORY quorvel PROPERTIES GENERATED ON MACOSX_PACKAGE_LOCATION Resources)
set_target_properties(quorvel PROPERTIES
  MACOSX_BUNDLE ON
  OUTPUT_NAME Quorvel
  MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_SOURCE_DIR}/Info.plist.in)
install(TARGETS quorvel BUNDLE DESTINATION .)
install(TARGETS quorvel_sound DESTINATION Quorvel.app/Contents/PlugIns)
