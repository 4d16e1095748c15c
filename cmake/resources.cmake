# Generated resources and the translations' tool chain.
#   - the application icon (tools/make_icon.py) and the toolbar images (tools/make_toolbar_images.py),
#     which res/quillon.rc includes from ${QUILLON_GEN};
#   - the translation template made from res/strings.txt and res/quillon.rc, which must equal the
#     committed locale/quillon.pot, and every locale/<code>.po checked against it (tools/check_po.py);
#   - each .po compiled by msgfmt --check-format into dist/Quillon/lib/locale/<Language>/LC_MESSAGES.
# Both builds run the checks and make the catalogs, so a stale translation fails either one.

# --- the icon ---------------------------------------------------------------------------------------
set(QUILLON_ICON ${QUILLON_GEN}/quillon.ico)
add_custom_command(
    OUTPUT ${QUILLON_ICON}
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/make_icon.py ${QUILLON_ICON}
    DEPENDS ${CMAKE_SOURCE_DIR}/tools/make_icon.py
    COMMENT "Drawing the application icon")
set(QUILLON_TOOLBAR_RC ${QUILLON_GEN}/toolbar.rc)
add_custom_command(
    OUTPUT ${QUILLON_TOOLBAR_RC}
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/make_toolbar_images.py ${QUILLON_GEN}
    DEPENDS ${CMAKE_SOURCE_DIR}/tools/make_toolbar_images.py
    COMMENT "Drawing the toolbar images")
# one target for every generated resource, so that the test programs, which carry the script too, wait
add_custom_target(quillon_icon DEPENDS ${QUILLON_ICON} ${QUILLON_TOOLBAR_RC})
if(TARGET quillon)
    add_dependencies(quillon quillon_icon)
    set_property(SOURCE ${CMAKE_SOURCE_DIR}/res/quillon.rc APPEND PROPERTY OBJECT_DEPENDS
                 ${QUILLON_ICON} ${QUILLON_TOOLBAR_RC})
endif()

# --- template and translations ----------------------------------------------------------------------
find_program(QUILLON_MSGFMT msgfmt REQUIRED)

# locale/<code>.po -> the catalog directory that the language selection names
set(QUILLON_LANGUAGES de German fr French es Spanish it Italian ja Japanese)
set(QUILLON_POT_SOURCES ${CMAKE_SOURCE_DIR}/res/strings.txt ${CMAKE_SOURCE_DIR}/res/quillon.rc
                        ${CMAKE_SOURCE_DIR}/res/resource.h)
set(QUILLON_L10N_TOOLS ${CMAKE_SOURCE_DIR}/tools/make_pot.py ${CMAKE_SOURCE_DIR}/tools/check_po.py
                       ${CMAKE_SOURCE_DIR}/tools/strings.py)
set(QUILLON_POT ${QUILLON_GEN}/quillon.pot)
set(QUILLON_LOCALE_DIR ${CMAKE_BINARY_DIR}/dist/Quillon/lib/locale)

add_custom_command(
    OUTPUT ${QUILLON_POT}
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/make_pot.py
            ${CMAKE_SOURCE_DIR}/res/strings.txt ${CMAKE_SOURCE_DIR}/res/quillon.rc -o ${QUILLON_POT}
    DEPENDS ${QUILLON_POT_SOURCES} ${QUILLON_L10N_TOOLS}
    COMMENT "Generating the translation template")

set(po_files)
set(mo_files)
set(QUILLON_LANGUAGE_MAP "") # "de=German,fr=French,...", for the tool chain's test
list(LENGTH QUILLON_LANGUAGES n)
math(EXPR last "${n} - 1")
foreach(i RANGE 0 ${last} 2)
    math(EXPR j "${i} + 1")
    list(GET QUILLON_LANGUAGES ${i} code)
    list(GET QUILLON_LANGUAGES ${j} language)
    list(APPEND po_files ${CMAKE_SOURCE_DIR}/locale/${code}.po)
    list(APPEND mo_files ${QUILLON_LOCALE_DIR}/${language}/LC_MESSAGES/quillon.mo)
    string(APPEND QUILLON_LANGUAGE_MAP "${code}=${language},")
endforeach()
string(REGEX REPLACE ",$" "" QUILLON_LANGUAGE_MAP "${QUILLON_LANGUAGE_MAP}")

# every .po is checked, also one not (yet) in the list above: the test then names the stray one
file(GLOB all_po_files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/locale/*.po)
list(APPEND all_po_files ${po_files})
list(REMOVE_DUPLICATES all_po_files)

set(check_stamp ${CMAKE_BINARY_DIR}/l10n-checked.stamp)
add_custom_command(
    OUTPUT ${check_stamp}
    COMMAND ${CMAKE_COMMAND} -E rm -f ${check_stamp}
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/check_po.py --template ${QUILLON_POT}
            --committed ${CMAKE_SOURCE_DIR}/locale/quillon.pot --rc ${CMAKE_SOURCE_DIR}/res/quillon.rc
            --stamp ${check_stamp} ${all_po_files}
    DEPENDS ${QUILLON_POT} ${CMAKE_SOURCE_DIR}/locale/quillon.pot ${all_po_files} ${QUILLON_L10N_TOOLS}
    COMMENT "Checking the template and the translations"
    VERBATIM)

foreach(po mo IN ZIP_LISTS po_files mo_files)
    get_filename_component(mo_dir ${mo} DIRECTORY)
    add_custom_command(
        OUTPUT ${mo}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${mo_dir}
        COMMAND ${QUILLON_MSGFMT} --check-format --check-header --check-domain -o ${mo} ${po}
        DEPENDS ${po} ${check_stamp}
        COMMENT "Compiling ${po}"
        VERBATIM)
endforeach()
add_custom_target(catalogs ALL DEPENDS ${check_stamp} ${mo_files})
if(TARGET quillon)
    add_dependencies(quillon catalogs)
endif()

# Writes the template into the source tree; the translations are then msgmerge'd and translated.
add_custom_target(update_pot
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/make_pot.py
            ${CMAKE_SOURCE_DIR}/res/strings.txt ${CMAKE_SOURCE_DIR}/res/quillon.rc
            -o ${CMAKE_SOURCE_DIR}/locale/quillon.pot
    COMMENT "Writing locale/quillon.pot"
    VERBATIM)
