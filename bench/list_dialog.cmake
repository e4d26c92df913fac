target_link_libraries(bench_list_dialog PRIVATE mosa_core)
target_compile_definitions(bench_list_dialog PRIVATE MOSA_BENCH_BUNDLE="${CMAKE_BINARY_DIR}/bin")
add_dependencies(bench_list_dialog mosa_resources)
