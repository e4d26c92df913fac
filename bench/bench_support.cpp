#include "bench_support.h"

#include <cstdlib>
#include <filesystem>

#include "fmwrapper/host_api.h"
#include "frame/frame.h"

namespace bench {

namespace {
const std::string kBundle = MOSA_BENCH_BUNDLE;
}

void loadPlugin() {
  static bool done = false;
  if (done) return;
  done = true;
  FMX_ExternCallStruct pb{};
  pb.extnVersion = 60;
  pb.whichCall = kFMXT_Init;
  pb.instanceID = reinterpret_cast<fmx::ptrtype>(kBundle.c_str());
  FMExternCallProc(&pb);
}

bool usable(benchmark::State& state, toolkit::Backend backend) {
  if (backend != toolkit::Backend::Qt) return true;
  if (!std::filesystem::exists(std::filesystem::path(kBundle) / "libmosa_toolkit_qt.so")) {
    state.SkipWithError("the Qt module is not built");
    return false;
  }
  return true;
}

std::u16string call(short id, const std::vector<std::u16string>& texts) {
  fmx::DataVectUniquePtr args;
  fmx::LocaleUniquePtr locale;
  for (const std::u16string& text : texts) {
    fmx::TextUniquePtr t;
    t->AssignUnicodeWithLength(reinterpret_cast<const fmx::uint16*>(text.data()),
                               static_cast<fmx::uint32>(text.size()));
    fmx::DataUniquePtr data;
    data->SetAsText(*t, *locale);
    args->PushBack(*data);
  }
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  ZkMosa7_Dispatch(id, *env, *args, *result);
  const fmx::Text& answer = result->GetAsText();
  std::u16string out(answer.GetSize(), u'\0');
  answer.GetUnicode(reinterpret_cast<fmx::uint16*>(out.data()), 0, answer.GetSize());
  return out;
}

void configure(toolkit::Backend backend, std::vector<std::string> answers) {
  toolkit::SessionOptions options;
  options.backend = backend;
  options.answers = std::move(answers);
  toolkit::configureSession(options);
}

ReadyClock::ReadyClock(toolkit::Backend backend) {
  toolkit::setReadyObserver([this, qt = backend == toolkit::Backend::Qt] {
    if (qt) toolkit::pumpEvents();
    ready_ = Clock::now();
  });
}

ReadyClock::~ReadyClock() {
  toolkit::setReadyObserver(nullptr);
}

void timeOpening(benchmark::State& state, ReadyClock& clock, toolkit::Backend backend,
                 const std::vector<std::string>& answers, const std::function<bool()>& callDialog) {
  double callSeconds = 0;
  for (auto _ : state) {
    configure(backend, answers);
    clock.reset();
    const Clock::time_point begin = Clock::now();
    const bool answered = callDialog();
    const Clock::time_point end = Clock::now();
    if (!answered || !clock.seen()) {
      state.SkipWithError("the dialog did not open and answer");
      break;
    }
    state.SetIterationTime(std::chrono::duration<double>(clock.at() - begin).count());
    callSeconds += std::chrono::duration<double>(end - begin).count();
  }
  state.counters["call_ms"] =
      benchmark::Counter(callSeconds * 1000, benchmark::Counter::kAvgIterations);
}

}  // namespace bench

int main(int argc, char** argv) {
  if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  toolkit::endSession();  // the Qt windows go before the libraries unload
  return 0;
}
