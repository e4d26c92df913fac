target_link_libraries(switches_fuzzer PRIVATE mosa_core)
target_compile_options(mosa_core PRIVATE -fsanitize=fuzzer-no-link)
