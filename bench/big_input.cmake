target_link_libraries(bench_big_input PRIVATE mosa_core)
target_compile_definitions(bench_big_input PRIVATE MOSA_BENCH_BUNDLE="${CMAKE_BINARY_DIR}/bin")
add_dependencies(bench_big_input mosa_resources)
