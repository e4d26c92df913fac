target_link_libraries(calc_fuzzer PRIVATE mosa_hostengine)
target_compile_options(mosa_hostengine PRIVATE -fsanitize=fuzzer-no-link)
