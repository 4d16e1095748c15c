# The Windows tests of the version check (VersionServer.*) need the local product-attribute server: they
# run as their own entry inside the server's --wrap, which hands them its address, table and log; the
# plain win_tests entry leaves them out.
if(TARGET win_tests)
    set_property(TEST win_tests APPEND PROPERTY ENVIRONMENT "GTEST_FILTER=-VersionServer.*")
    set(version_dir ${CMAKE_BINARY_DIR}/version-server)
    file(MAKE_DIRECTORY ${version_dir})
    add_test(NAME win_tests_version
        COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/productServer.py
                --table ${version_dir}/table.txt --log ${version_dir}/requests.log
                --wrap ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:win_tests> --gtest_color=no
                --gtest_filter=VersionServer.*)
    set_tests_properties(win_tests_version PROPERTIES ENVIRONMENT "${test_env}" TIMEOUT 300)
endif()
