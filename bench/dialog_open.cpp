// From the call of Mosa_Dialog to the dialog shown and ready for input (an answered click then
// closes it, so each sample also holds the close): the first dialog of a process, which on Qt
// loads the module and makes the QApplication, and the steady state; on headless and on Qt
// (QT_QPA_PLATFORM=offscreen unless a display is set).
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "fmwrapper/host_api.h"
#include "frame/frame.h"
#include "toolkit/session.h"

namespace {

const std::string kBundle = MOSA_BENCH_BUNDLE;

bool qtBuilt() {
  return std::filesystem::exists(std::filesystem::path(kBundle) / "libmosa_toolkit_qt.so");
}

void initPlugin() {
  static bool done = false;
  if (done) return;
  done = true;
  FMX_ExternCallStruct pb{};
  pb.extnVersion = 60;
  pb.whichCall = kFMXT_Init;
  pb.instanceID = reinterpret_cast<fmx::ptrtype>(kBundle.c_str());
  FMExternCallProc(&pb);
}

bool callDialog() {
  fmx::DataVectUniquePtr args;
  fmx::LocaleUniquePtr locale;
  for (const char* text : {"-CautionIcon", "Save the changes to the document before closing?",
                           "Save", "Cancel", "Don't Save"}) {
    fmx::TextUniquePtr t;
    t->Assign(text, fmx::Text::kEncoding_UTF8);
    fmx::DataUniquePtr data;
    data->SetAsText(*t, *locale);
    args->PushBack(*data);
  }
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  ZkMosa7_Dispatch(4302, *env, *args, *result);
  fmx::TextUniquePtr one;
  one->Assign("1");
  return result->GetAsText() == *one;
}

void OpenDialog(benchmark::State& state, toolkit::Backend backend) {
  if (backend == toolkit::Backend::Qt && !qtBuilt()) {
    state.SkipWithError("the Qt module is not built");
    return;
  }
  if (backend == toolkit::Backend::Qt && !std::getenv("DISPLAY"))
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
  initPlugin();
  for (auto _ : state) {
    state.PauseTiming();
    toolkit::SessionOptions options;
    options.backend = backend;
    options.answers = {"click 1"};
    toolkit::configureSession(options);
    state.ResumeTiming();
    if (!callDialog()) state.SkipWithError("the dialog did not answer");
  }
}

}  // namespace

// The first dialog of the process on each backend, then the steady state.
BENCHMARK_CAPTURE(OpenDialog, first_headless, toolkit::Backend::Headless)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, first_qt, toolkit::Backend::Qt)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, steady_headless, toolkit::Backend::Headless)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(OpenDialog, steady_qt, toolkit::Backend::Qt)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
