# Writes the commit that the sources are at into the header COMMIT_HEADER, which stays as it is while
# the commit does.
execute_process(COMMAND git -C ${SOURCE_DIR} rev-parse --short HEAD
  OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failure)
if(failure)
  set(commit unknown)  # sources without their history
else()
  execute_process(COMMAND git -C ${SOURCE_DIR} status --porcelain --untracked-files=no
    OUTPUT_VARIABLE changes)
  if(changes)
    string(APPEND commit ", with changes")
  endif()
endif()
file(CONFIGURE OUTPUT ${COMMIT_HEADER} CONTENT "#define BRISEL_COMMIT \"${commit}\"\n")
