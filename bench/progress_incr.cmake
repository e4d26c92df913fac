# Loads the real plug-in from the build's bin folder; counts paints through Qt.
target_link_libraries(bench_progress_incr PRIVATE mosa_hostengine)
target_compile_definitions(bench_progress_incr PRIVATE MOSA_PLUGIN="$<TARGET_FILE:MosaPlugin>")
add_dependencies(bench_progress_incr MosaPlugin mosa_toolkit_qt)
find_package(Qt6 REQUIRED COMPONENTS Widgets)
target_link_libraries(bench_progress_incr PRIVATE Qt6::Widgets)
