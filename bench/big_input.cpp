// The big input dialog with 64,000 characters of text. open_*: from the call of
// Mosa_BigInputDialog to the dialog shown and ready for input (the toolkit's ready observer; on Qt
// the window's pending events, the first drawing among them, are run first), every dialog after
// the first. keystroke_*: one key, from the answer to the text changed and the scroll bar set
// again, through the dialog's own key handling: a letter and a Backspace by turns, at 63,999 and
// 64,000 characters. Headless, and Qt (QT_QPA_PLATFORM=offscreen unless a display is set).
#include <benchmark/benchmark.h>

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
constexpr int kKeys = 400;

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

// Lines of mixed scripts, 63,999 UTF-16 units in all.
std::u16string longText() {
  const std::u16string line = u"Grüße aus Köln, мир и дружба, 世界と平和, שלום עולם 😀\r";
  std::u16string text;
  while (text.size() < 63999) text += line;
  text.resize(63999);
  if (text.back() >= 0xD800 && text.back() <= 0xDBFF) text.back() = u'x';
  return text;
}

bool callDialog(const std::u16string& text) {
  fmx::DataVectUniquePtr args;
  fmx::LocaleUniquePtr locale;
  auto push = [&](const std::u16string& value) {
    fmx::TextUniquePtr t;
    t->AssignUnicodeWithLength(reinterpret_cast<const fmx::uint16*>(value.data()),
                               static_cast<fmx::uint32>(value.size()));
    fmx::DataUniquePtr data;
    data->SetAsText(*t, *locale);
    args->PushBack(*data);
  };
  for (const char16_t* s : {u"-NoteIcon", u"Write it all down.", u"Save", u"Cancel", u"", u""})
    push(s);
  push(text);
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  ZkMosa7_Dispatch(4300, *env, *args, *result);
  return result->GetAsText().GetSize() > text.size();
}

void configure(toolkit::Backend backend, std::vector<std::string> answers) {
  toolkit::SessionOptions options;
  options.backend = backend;
  options.answers = std::move(answers);
  toolkit::configureSession(options);
}

bool usable(benchmark::State& state, toolkit::Backend backend) {
  if (backend != toolkit::Backend::Qt) return true;
  if (!std::filesystem::exists(std::filesystem::path(kBundle) / "libmosa_toolkit_qt.so")) {
    state.SkipWithError("the Qt module is not built");
    return false;
  }
  return true;
}

using Clock = std::chrono::steady_clock;

void Open(benchmark::State& state, toolkit::Backend backend) {
  if (!usable(state, backend)) return;
  initPlugin();
  const std::u16string text = longText();
  Clock::time_point ready;
  toolkit::setReadyObserver([&] {
    if (backend == toolkit::Backend::Qt) toolkit::pumpEvents();
    ready = Clock::now();
  });
  configure(backend, {"key Enter"});
  callDialog(text);  // the backend is made and its first dialog shown before timing
  for (auto _ : state) {
    configure(backend, {"key Enter"});
    ready = {};
    const Clock::time_point begin = Clock::now();
    if (!callDialog(text) || ready == Clock::time_point{}) {
      state.SkipWithError("the dialog did not open and answer");
      break;
    }
    state.SetIterationTime(std::chrono::duration<double>(ready - begin).count());
  }
  toolkit::setReadyObserver(nullptr);
}

// Each iteration is one dialog of kKeys keys; the time per key is the time from ready to the
// dialog's end, divided by the keys (the closing, once, is in it).
void Keystroke(benchmark::State& state, toolkit::Backend backend) {
  if (!usable(state, backend)) return;
  initPlugin();
  const std::u16string text = longText();
  std::vector<std::string> answers;
  for (int i = 0; i < kKeys / 2; ++i) {
    answers.emplace_back("key a");
    answers.emplace_back("key Backspace");
  }
  answers.emplace_back("key Enter");
  Clock::time_point ready;
  toolkit::setReadyObserver([&] {
    if (backend == toolkit::Backend::Qt) toolkit::pumpEvents();
    ready = Clock::now();
  });
  for (auto _ : state) {
    configure(backend, answers);
    ready = {};
    if (!callDialog(text) || ready == Clock::time_point{}) {
      state.SkipWithError("the dialog did not open and answer");
      break;
    }
    const Clock::time_point end = Clock::now();
    state.SetIterationTime(std::chrono::duration<double>(end - ready).count() / kKeys);
  }
  toolkit::setReadyObserver(nullptr);
}

BENCHMARK_CAPTURE(Open, open_headless, toolkit::Backend::Headless)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, open_qt, toolkit::Backend::Qt)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Keystroke, keystroke_headless, toolkit::Backend::Headless)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Keystroke, keystroke_qt, toolkit::Backend::Qt)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  toolkit::endSession();  // the Qt windows go before the libraries unload
  return 0;
}
