# Writes the commit of the sources in SOURCE to the file TARGET, with "-changed" if files differ from it. The file is empty
# if the sources are not in a repository, and keeps its time if nothing has changed.
execute_process(COMMAND git describe --always --abbrev=12 --exclude=* --dirty=-changed
    WORKING_DIRECTORY "${SOURCE}" OUTPUT_VARIABLE commit ERROR_QUIET)
file(CONFIGURE OUTPUT "${TARGET}" CONTENT "${commit}" @ONLY NEWLINE_STYLE UNIX)
