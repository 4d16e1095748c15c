# Windows programs of the Wine benchmarks (bench/*.sh): the bare EDIT control that the open benchmark
# measures Quillon against.
if(WIN32)
    add_executable(bench_bare_edit WIN32 ${CMAKE_SOURCE_DIR}/bench/bareEdit.cpp)
    target_link_libraries(bench_bare_edit PRIVATE quillon_core gdi32 shell32)
    target_link_options(bench_bare_edit PRIVATE -municode)
endif()
# the start-up benchmark's timer (bench/startup.sh)
if(WIN32)
    add_executable(bench_startup_timer ${CMAKE_SOURCE_DIR}/bench/startupTimer.cpp)
    target_link_options(bench_startup_timer PRIVATE -municode)
endif()
