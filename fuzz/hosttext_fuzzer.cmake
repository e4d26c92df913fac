target_link_libraries(hosttext_fuzzer PRIVATE FMWrapper)
target_compile_options(FMWrapper PRIVATE -fsanitize=fuzzer-no-link)
