# Windows programs of the Wine benchmarks (bench/*.sh): the bare EDIT control that the open benchmark
# measures Quillon against.
if(WIN32)
    # built by bench/open.sh when it runs, not by every build
    add_executable(bench_bare_edit WIN32 EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/bench/bareEdit.cpp)
    target_link_libraries(bench_bare_edit PRIVATE quillon_core gdi32 shell32)
    target_link_options(bench_bare_edit PRIVATE -municode)
endif()
