# The command-line end-to-end test: the real exe from the installation tree under Wine.
if(WIN32)
    add_test(NAME e2e_usage COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/test_usage.py)
    set_tests_properties(e2e_usage PROPERTIES TIMEOUT 600
        ENVIRONMENT "QUILLON_BUILD_DIR=${CMAKE_BINARY_DIR};QUILLON_SOURCE_DIR=${CMAKE_SOURCE_DIR};WINEPREFIX=${CMAKE_BINARY_DIR}/wineprefix")
endif()
