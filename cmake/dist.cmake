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

    # The help file, compiled by chmcmd from help/ (project quillon.hhp, which lists every page). chmcmd
    # writes next to its project, so it works on a copy in the build tree.
    find_program(QUILLON_CHMCMD chmcmd REQUIRED)
    file(GLOB help_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/help/*)
    set(help_work ${CMAKE_BINARY_DIR}/help)
    set(QUILLON_CHM ${QUILLON_DIST}/file/help/quillon.chm)
    add_custom_command(
        OUTPUT ${QUILLON_CHM}
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${help_work}
        COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/help ${help_work}
        COMMAND ${CMAKE_COMMAND} -E chdir ${help_work} ${QUILLON_CHMCMD} --verbosity 0 quillon.hhp
        COMMAND ${CMAKE_COMMAND} -E make_directory ${QUILLON_DIST}/file/help
        COMMAND ${CMAKE_COMMAND} -E copy ${help_work}/quillon.chm ${QUILLON_CHM}
        WORKING_DIRECTORY ${CMAKE_BINARY_DIR}
        DEPENDS ${help_sources}
        COMMENT "Compiling the help file"
        VERBATIM)
    add_custom_target(help_file ALL DEPENDS ${QUILLON_CHM})

    # `make run` builds only this: the tree (whatever it gains hangs here) and the starter that hands
    # Quillon the environment a Windows desktop would (scripts/run.sh)
    add_executable(start_as_windows WIN32 ${CMAKE_SOURCE_DIR}/scripts/startAsWindows.cpp)
    target_link_options(start_as_windows PRIVATE -municode)
    add_custom_target(run_tree)
    add_dependencies(run_tree quillon start_as_windows help_file)
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
    add_dependencies(dist quillon catalogs help_file)
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
