// From the call of Mosa_Dialog to the dialog shown and ready for input: the moment the dialog, on
// screen, first waits for input (the toolkit's ready observer). On Qt the window's pending events
// (expose, layout, paint) are run first, so the time holds the first drawing. The answered click
// that then closes the dialog is not in the time (the counter call_ms has the whole call).
// first_*: the first dialog of the process, which on Qt loads the module and makes the
// QApplication; first_qt_warmed: the first dialog after the host's idle warm-up (run it on its own,
// --benchmark_filter=first_qt_warmed); steady_*: every later dialog. Headless, and Qt
// (QT_QPA_PLATFORM=offscreen unless a display is set).
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
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

bool gQtUsed = false;  // a Qt backend was made in this process

void configure(toolkit::Backend backend) {
  toolkit::SessionOptions options;
  options.backend = backend;
  options.answers = {"click 1"};
  toolkit::configureSession(options);
}

enum class Start { Cold, Warmed, Steady };

void OpenDialog(benchmark::State& state, toolkit::Backend backend, Start start) {
  const bool qt = backend == toolkit::Backend::Qt;
  if (qt && !qtBuilt()) {
    state.SkipWithError("the Qt module is not built");
    return;
  }
  if (qt && start == Start::Warmed && gQtUsed) {
    state.SkipWithError("Qt is loaded already: run it alone (--benchmark_filter=first_qt_warmed)");
    return;
  }
  if (qt && !std::getenv("DISPLAY")) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  initPlugin();
  using Clock = std::chrono::steady_clock;
  Clock::time_point ready;
  toolkit::setReadyObserver([&] {
    if (qt) toolkit::pumpEvents();
    ready = Clock::now();
  });
  if (start == Start::Warmed) {
    configure(backend);
    toolkit::warmUp();  // as the host does in its first idle calls
  }
  if (start == Start::Steady) {
    configure(backend);
    callDialog();  // the backend is made and its first dialog shown before timing
  }
  if (qt) gQtUsed = true;
  double callSeconds = 0;
  for (auto _ : state) {
    configure(backend);
    ready = {};
    const Clock::time_point begin = Clock::now();
    const bool answered = callDialog();
    const Clock::time_point end = Clock::now();
    if (!answered || ready == Clock::time_point{}) {
      state.SkipWithError("the dialog did not open and answer");
      break;
    }
    state.SetIterationTime(std::chrono::duration<double>(ready - begin).count());
    callSeconds += std::chrono::duration<double>(end - begin).count();
  }
  toolkit::setReadyObserver(nullptr);
  state.counters["call_ms"] =
      benchmark::Counter(callSeconds * 1000, benchmark::Counter::kAvgIterations);
}

}  // namespace

// The first dialog of the process on each backend, then the steady state.
BENCHMARK_CAPTURE(OpenDialog, first_headless, toolkit::Backend::Headless, Start::Cold)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, first_qt, toolkit::Backend::Qt, Start::Cold)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, steady_headless, toolkit::Backend::Headless, Start::Steady)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(OpenDialog, steady_qt, toolkit::Backend::Qt, Start::Steady)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, first_qt_warmed, toolkit::Backend::Qt, Start::Warmed)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
