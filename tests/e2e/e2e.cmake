# The end-to-end tests: each tests/e2e/test_*.py is one CTest entry, run against the installation tree
# in the build's own Wine prefix; DISPLAY comes from the xvfb-run around ctest.
if(WIN32)
    # the probe that reads another process's windows (windowText.cpp), built beside the tests
    add_executable(windowText ${CMAKE_CURRENT_LIST_DIR}/windowText.cpp)
    target_link_options(windowText PRIVATE -municode)
    # its measuring half, which runs inside the program under test; found beside windowText.exe
    add_library(windowTextFit SHARED ${CMAKE_CURRENT_LIST_DIR}/windowTextFit.cpp)
    set_target_properties(windowTextFit PROPERTIES PREFIX "")
    add_dependencies(windowText windowTextFit)
    file(GLOB e2e_files CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/test_*.py)
    foreach(f IN LISTS e2e_files)
        get_filename_component(name ${f} NAME_WE)
        add_test(NAME e2e_${name} COMMAND ${Python3_EXECUTABLE} -m unittest -v ${name}
                 WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR})
        set_tests_properties(e2e_${name} PROPERTIES RUN_SERIAL TRUE TIMEOUT 600 ENVIRONMENT
            "QUILLON_SOURCE_DIR=${CMAKE_SOURCE_DIR};QUILLON_BUILD_DIR=${CMAKE_BINARY_DIR};QUILLON_DIST=${CMAKE_BINARY_DIR}/dist/Quillon;QUILLON_WINEPREFIX=${CMAKE_BINARY_DIR}/wineprefix;WINEPREFIX=${CMAKE_BINARY_DIR}/wineprefix;QUILLON_E2E_ARTIFACTS=${CMAKE_BINARY_DIR}/e2e-artifacts;QUILLON_WINDOW_TEXT=$<TARGET_FILE:windowText>")
    endforeach()
endif()

# The helper that adds a test certificate authority to the prefix's trusted roots.
if(WIN32)
    add_executable(e2e_rootCertificate ${CMAKE_CURRENT_LIST_DIR}/rootCertificate.cpp)
    target_link_options(e2e_rootCertificate PRIVATE -municode)
    target_link_libraries(e2e_rootCertificate PRIVATE crypt32)
    set_target_properties(e2e_rootCertificate PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/e2e-helpers)
endif()
