# Lays out the installation tree exactly as the program expects it, under dist/Quillon:
#   sys/exec/quillon.exe, sys/install/product, lib/locale/<Language>/LC_MESSAGES/quillon.mo,
#   file/help/quillon.chm
if(WIN32)
    set(QUILLON_DIST ${CMAKE_BINARY_DIR}/dist/Quillon)
    add_custom_command(TARGET quillon POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E make_directory ${QUILLON_DIST}/sys/exec ${QUILLON_DIST}/sys/install
                ${QUILLON_DIST}/lib/locale ${QUILLON_DIST}/file/help
        COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:quillon> ${QUILLON_DIST}/sys/exec/
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${CMAKE_SOURCE_DIR}/res/product
                ${QUILLON_DIST}/sys/install/product
        VERBATIM)
endif()
