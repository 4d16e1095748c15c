# The translations' tool chain proves that it catches what it is for: broken printf conversions,
# translations out of step with the template, a stale template. Plain Python against the real files and
# the real msgfmt: both builds make the catalogs by the same rules, so it runs once, in the native build,
# beside the unit tests.

if(NOT WIN32)
    add_test(NAME l10n_toolchain
             COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/l10nToolchainTest.py)
    set_tests_properties(l10n_toolchain PROPERTIES
        ENVIRONMENT "QUILLON_SOURCE_DIR=${CMAKE_SOURCE_DIR};QUILLON_MSGFMT=${QUILLON_MSGFMT};QUILLON_LANGUAGES=${QUILLON_LANGUAGE_MAP}"
        TIMEOUT 300)
endif()

# the test programs link the same resource script: a new icon rebuilds it here too
if(DEFINED QUILLON_ICON)
    set_property(SOURCE ${CMAKE_SOURCE_DIR}/res/quillon.rc APPEND PROPERTY OBJECT_DEPENDS ${QUILLON_ICON})
endif()
