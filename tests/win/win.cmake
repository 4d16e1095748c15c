# A test-only resource of the window tests (a dialog that cannot be made), the child process that a
# safe-save test kills half-way, and the safe-save run on a really full volume.
if(TARGET win_tests)
    target_sources(win_tests PRIVATE ${CMAKE_CURRENT_LIST_DIR}/winTest.rc)
    add_executable(safeSaveChild ${CMAKE_CURRENT_LIST_DIR}/child/safeSaveChild.cpp)
    target_link_options(safeSaveChild PRIVATE -municode)
    target_link_libraries(safeSaveChild PRIVATE quillon_gui)
    add_dependencies(win_tests safeSaveChild)
    target_compile_definitions(win_tests PRIVATE SAFE_SAVE_CHILD="$<TARGET_FILE:safeSaveChild>")
    add_test(NAME win_tests_full_disk
        COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/fullDisk.sh ${CMAKE_SOURCE_DIR}/cmake/wine-run.sh
                $<TARGET_FILE:win_tests> ${CMAKE_BINARY_DIR}/full-disk)
    set_tests_properties(win_tests_full_disk PROPERTIES ENVIRONMENT "${test_env}" SKIP_RETURN_CODE 77 TIMEOUT 120)
endif()
