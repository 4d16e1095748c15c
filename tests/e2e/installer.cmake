# The packages' end-to-end test needs `make dist` first: the packaging runs as a test of its own, set up
# for it.
if(WIN32)
    add_test(NAME dist COMMAND ${CMAKE_COMMAND} --build ${CMAKE_BINARY_DIR} --target dist)
    set_tests_properties(dist PROPERTIES FIXTURES_SETUP quillon_packages TIMEOUT 300)
    set_tests_properties(e2e_test_installer PROPERTIES FIXTURES_REQUIRED quillon_packages)
    set_property(TEST e2e_test_installer APPEND PROPERTY ENVIRONMENT
                 "QUILLON_ICON=${QUILLON_ICON};QUILLON_PACKAGE_VERSION=${PROJECT_VERSION}")
endif()
