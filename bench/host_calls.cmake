# Loads the real plug-in from the build's bin folder.
target_link_libraries(bench_host_calls PRIVATE mosa_hostengine)
target_compile_definitions(bench_host_calls PRIVATE MOSA_PLUGIN="$<TARGET_FILE:MosaPlugin>")
add_dependencies(bench_host_calls MosaPlugin)
