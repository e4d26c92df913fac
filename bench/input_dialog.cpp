// The input dialog with nine inputs (edit fields, two pop-ups, a check box, a bullet field), from
// the call of Mosa_InputDialog to the dialog shown and ready for input (the toolkit's ready
// observer; on Qt after the window's pending events, so the first drawing is in the time). The
// answered click that closes it is not in the time; the counter call_ms has the whole call.
// first_headless: the first dialog of the process; first_qt_warmed: the first on Qt, after the
// host's idle warm-up (so these two run in this order, before any other); steady_*: every later
// dialog. Qt runs with QT_QPA_PLATFORM=offscreen unless a display is set.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <string>

#include "fmwrapper/host_api.h"
#include "frame/frame.h"
#include "toolkit/session.h"

namespace {

const std::string kBundle = MOSA_BENCH_BUNDLE;

bool qtBuilt() {
  return std::filesystem::exists(std::filesystem::path(kBundle) / "libmosa_toolkit_qt.so");
}

// Calls function `id` with texts; whether it answered `expected` (null: anything).
bool call(fmx::int16 id, std::initializer_list<const char*> texts, const char* expected) {
  fmx::DataVectUniquePtr args;
  fmx::LocaleUniquePtr locale;
  for (const char* text : texts) {
    fmx::TextUniquePtr t;
    t->Assign(text, fmx::Text::kEncoding_UTF8);
    fmx::DataUniquePtr data;
    data->SetAsText(*t, *locale);
    args->PushBack(*data);
  }
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  ZkMosa7_Dispatch(id, *env, *args, *result);
  if (!expected) return true;
  fmx::TextUniquePtr want;
  want->Assign(expected, fmx::Text::kEncoding_UTF8);
  return result->GetAsText() == *want;
}

// Loads the plug-in and stores the labels, inputs and pop-up items the dialog shows.
void initPlugin() {
  static bool done = false;
  if (done) return;
  done = true;
  FMX_ExternCallStruct pb{};
  pb.extnVersion = 60;
  pb.whichCall = kFMXT_Init;
  pb.instanceID = reinterpret_cast<fmx::ptrtype>(kBundle.c_str());
  FMExternCallProc(&pb);
  call(4313,
       {"", "Name", "E-mail", "Phone", "Country", "Plan", "Password", "Street", "City",
        "Send me the newsletter"},
       nullptr);
  call(4312,
       {"", "Ada Lovelace", "ada@example.org", "", "Norway", "Team", "", "Main Street 1", "Oslo",
        "1"},
       nullptr);
  call(4315, {"-popup4", "France\rGermany\rNorway\rUnited Kingdom\r-\rOther"}, nullptr);
  call(4315, {"-popup5", "Personal\rTeam\rEnterprise"}, nullptr);
}

bool callDialog() {
  return call(4308,
              {"-NoteIcon -popup4 -popup5 -Bullet6 -Checkbox9", "9",
               "Create an account for the new colleague.", "Create", "Cancel"},
              "|Ada Lovelace|ada@example.org||Norway|Team||Main Street 1|Oslo|1");
}

void configure(toolkit::Backend backend) {
  toolkit::SessionOptions options;
  options.backend = backend;
  options.answers = {"click 1"};
  toolkit::configureSession(options);
}

enum class Start { Cold, Warmed, Steady };

void InputDialog(benchmark::State& state, toolkit::Backend backend, Start start) {
  const bool qt = backend == toolkit::Backend::Qt;
  if (qt && !qtBuilt()) {
    state.SkipWithError("the Qt module is not built");
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
  configure(backend);
  if (start == Start::Warmed) toolkit::warmUp();  // as the host does in its first idle calls
  if (start == Start::Steady) callDialog();       // the backend and its first dialog come first
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

BENCHMARK_CAPTURE(InputDialog, first_headless, toolkit::Backend::Headless, Start::Cold)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InputDialog, first_qt_warmed, toolkit::Backend::Qt, Start::Warmed)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InputDialog, steady_headless, toolkit::Backend::Headless, Start::Steady)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(InputDialog, steady_qt, toolkit::Backend::Qt, Start::Steady)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  toolkit::endSession();  // the Qt windows go before the libraries unload
  return 0;
}
