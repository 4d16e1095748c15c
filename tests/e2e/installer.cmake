# The packages' end-to-end test needs `make dist` first: the packaging runs as a test of its own, set up
# for it. windowText reads the message box that msiexec shows when it refuses a package.
if(WIN32)
    add_executable(window_text ${CMAKE_CURRENT_LIST_DIR}/windowText.cpp)
    target_link_options(window_text PRIVATE -municode)
    add_test(NAME dist COMMAND ${CMAKE_COMMAND} --build ${CMAKE_BINARY_DIR} --target dist)
    set_tests_properties(dist PROPERTIES FIXTURES_SETUP quillon_packages TIMEOUT 300)
    set_tests_properties(e2e_test_installer PROPERTIES FIXTURES_REQUIRED quillon_packages)
    set_property(TEST e2e_test_installer APPEND PROPERTY ENVIRONMENT
                 "QUILLON_WINDOW_TEXT=$<TARGET_FILE:window_text>;QUILLON_ICON=${QUILLON_ICON};QUILLON_VERSION=${PROJECT_VERSION}")
endif()
