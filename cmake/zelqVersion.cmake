# Writes OUTPUT from INPUT with the version and the commit; run at each build, since a commit does
# not make CMake configure anew. SOURCE_DIR is the project, VERSION its version.
set(commit "")
if(EXISTS "${SOURCE_DIR}/.git")  # and not a folder inside some other repository
  execute_process(
    COMMAND git --no-optional-locks -C "${SOURCE_DIR}"
      describe --always --exclude=* --abbrev=12 --dirty=+changes
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
else()
  file(STRINGS "${SOURCE_DIR}/cmake/commit.txt" commit LIMIT_COUNT 1)
  string(SUBSTRING "${commit}" 0 12 commit)
endif()
set(VERSION_TEXT "${VERSION}")
if(commit MATCHES "^[0-9a-f]+")
  string(APPEND VERSION_TEXT " (commit ${commit})")
endif()
configure_file("${INPUT}" "${OUTPUT}" @ONLY)
