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

# `make dist`: the signed MSI, the portable zip and SHA256SUMS beside the tree, in dist/. The signing
# identity comes from the environment (a release) or is the build's own test authority, kept in signing/.
if(WIN32)
    add_custom_target(dist
        COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/dist/package.py --tree ${QUILLON_DIST}
                --icon ${QUILLON_ICON} --version ${PROJECT_VERSION} --out ${CMAKE_BINARY_DIR}/dist
                --signing ${CMAKE_BINARY_DIR}/signing
        COMMENT "Packaging Quillon ${PROJECT_VERSION}"
        VERBATIM)
    # everything that lays out the tree comes first
    add_dependencies(dist quillon catalogs)
endif()

# English has a catalog of its own, every text translated to itself: an English user's language then
# has a catalog like any other, and only a language that Quillon does not speak is reported.
if(DEFINED QUILLON_POT)
    find_program(QUILLON_MSGEN msgen REQUIRED)
    set(english_po ${CMAKE_BINARY_DIR}/English.po)
    set(english_mo ${QUILLON_LOCALE_DIR}/English/LC_MESSAGES/quillon.mo)
    add_custom_command(
        OUTPUT ${english_mo}
        COMMAND ${QUILLON_MSGEN} --no-wrap -o ${english_po} ${QUILLON_POT}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${QUILLON_LOCALE_DIR}/English/LC_MESSAGES
        COMMAND ${QUILLON_MSGFMT} --check-format -o ${english_mo} ${english_po}
        DEPENDS ${QUILLON_POT} ${check_stamp}
        COMMENT "Making the English catalog"
        VERBATIM)
    add_custom_target(english_catalog ALL DEPENDS ${english_mo})
    add_dependencies(catalogs english_catalog)
endif()
