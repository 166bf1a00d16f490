# Before the files are packed they get the time of the last commit, which SOURCE_DATE_EPOCH tells, so
# that two builds of one commit give the same bytes.

if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(
    COMMAND find ${CPACK_TEMPORARY_INSTALL_DIRECTORY} -exec
            touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} + COMMAND_ERROR_IS_FATAL ANY)
endif()
