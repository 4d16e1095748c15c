# The command-line end-to-end tests: the real exe from the installation tree under Wine.
if(WIN32)
    foreach(name usage executable)
        add_test(NAME e2e_${name} COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/test_${name}.py)
        set_tests_properties(e2e_${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
            "QUILLON_BUILD_DIR=${CMAKE_BINARY_DIR};QUILLON_SOURCE_DIR=${CMAKE_SOURCE_DIR};WINEPREFIX=${CMAKE_BINARY_DIR}/wineprefix")
    endforeach()
endif()
