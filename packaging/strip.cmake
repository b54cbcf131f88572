# Run by CPack before it packs: as Debian's own helper strips, which takes the sections along that
# CPACK_STRIP_FILES leaves.
file(GLOB programs
    "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/*"
    "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/libexec/*/*")
if(NOT programs)
    message(FATAL_ERROR "No program in ${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
endif()
foreach(program IN LISTS programs)
    execute_process(COMMAND strip --strip-all --remove-section=.comment --remove-section=.note
        "${program}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
