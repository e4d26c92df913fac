find_package(PkgConfig REQUIRED)
pkg_check_modules(TURBOJPEG_BENCH REQUIRED IMPORTED_TARGET libturbojpeg)
target_link_libraries(bench_pictures PRIVATE mosa_toolkit PkgConfig::TURBOJPEG_BENCH)
target_include_directories(bench_pictures PRIVATE ${PROJECT_SOURCE_DIR}/tests/icons)
