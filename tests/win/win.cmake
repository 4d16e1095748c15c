# A test-only resource of the window tests (a dialog that cannot be made),
# and the safe-save run on a really full volume.
if(TARGET win_tests)
    target_sources(win_tests PRIVATE ${CMAKE_CURRENT_LIST_DIR}/winTest.rc)
    add_test(NAME win_tests_full_disk
        COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/fullDisk.sh ${CMAKE_SOURCE_DIR}/cmake/wine-run.sh
                $<TARGET_FILE:win_tests> ${CMAKE_BINARY_DIR}/full-disk)
    set_tests_properties(win_tests_full_disk PROPERTIES ENVIRONMENT "${test_env}" SKIP_RETURN_CODE 77 TIMEOUT 120)
endif()
