target_link_libraries(bench_dialog_open PRIVATE mosa_core)
target_compile_definitions(bench_dialog_open PRIVATE MOSA_BENCH_BUNDLE="${CMAKE_BINARY_DIR}/bin")
add_dependencies(bench_dialog_open mosa_resources)
