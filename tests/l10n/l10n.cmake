# The translations' tool chain proves that it catches what it is for: broken printf conversions,
# translations out of step with the template, a stale template; and that the installed catalogs and
# the icon are sound. Plain Python against the real files and the real msgfmt, so in both builds it
# runs natively (no Wine).
set(l10n_languages "")
list(LENGTH QUILLON_LANGUAGES n)
math(EXPR last "${n} - 1")
foreach(i RANGE 0 ${last} 2)
    math(EXPR j "${i} + 1")
    list(GET QUILLON_LANGUAGES ${i} code)
    list(GET QUILLON_LANGUAGES ${j} language)
    string(APPEND l10n_languages "${code}=${language},")
endforeach()
string(REGEX REPLACE ",$" "" l10n_languages "${l10n_languages}")

add_test(NAME l10n_toolchain
         COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/l10nToolchainTest.py)
set_tests_properties(l10n_toolchain PROPERTIES
    ENVIRONMENT "QUILLON_SOURCE_DIR=${CMAKE_SOURCE_DIR};QUILLON_MSGFMT=${QUILLON_MSGFMT};QUILLON_LOCALE_DIR=${QUILLON_LOCALE_DIR};QUILLON_LANGUAGES=${l10n_languages}"
    TIMEOUT 300)

# win_tests links the same resource script, whose ICON line needs the generated icon
if(TARGET win_tests)
    add_dependencies(win_tests quillon_icon)
    set_property(SOURCE ${CMAKE_SOURCE_DIR}/res/quillon.rc APPEND PROPERTY OBJECT_DEPENDS ${QUILLON_ICON})
endif()
