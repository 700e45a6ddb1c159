# Run by CPack on the tree that becomes the package.
set(tree ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)

# The programs lose what only a debugger reads.
file(GLOB programs ${tree}/bin/* ${tree}/lib/*/modules/*)
execute_process(
  COMMAND strip --strip-unneeded --remove-section=.comment --remove-section=.note ${programs}
  COMMAND_ERROR_IS_FATAL ANY)

# The folders are everybody's to read, whatever the builder allows others for new files.
execute_process(COMMAND find ${tree} -type d -exec chmod 755 {} + COMMAND_ERROR_IS_FATAL ANY)

# Every file gets the time of the source, so that the time of the build does not reach the package.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(
    COMMAND find ${tree} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
endif()
