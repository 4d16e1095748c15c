# Windows programs of the Wine benchmarks (bench/*.sh), each built by its script when it runs, not by every
# build: the bare EDIT control that the open benchmark measures Quillon against.
if(WIN32)
    add_executable(bench_bare_edit WIN32 EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/bench/bareEdit.cpp)
    target_link_libraries(bench_bare_edit PRIVATE quillon_core gdi32 shell32)
    target_link_options(bench_bare_edit PRIVATE -municode)
endif()
# the start-up benchmark's timer (bench/startup.sh)
if(WIN32)
    add_executable(bench_startup_timer EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/bench/startupTimer.cpp)
    target_link_options(bench_startup_timer PRIVATE -municode)
endif()
