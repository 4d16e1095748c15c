# Test-only resources of the window framework's tests (frame menu and accelerators, an integer dialog).
if(TARGET win_tests)
    target_sources(win_tests PRIVATE ${CMAKE_CURRENT_LIST_DIR}/winTest.rc)
endif()
