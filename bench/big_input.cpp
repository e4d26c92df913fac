// The big input dialog with 64,000 characters of text. open_*: from the call of
// Mosa_BigInputDialog to the dialog shown and ready for input (the toolkit's ready observer; on Qt
// the window's pending events, the first drawing among them, are run first), every dialog after
// the first. keystroke_*: one key, from the answer to the text changed and the scroll bar set
// again, through the dialog's own key handling: a letter and a Backspace by turns, at 63,999 and
// 64,000 characters. Headless, and Qt (QT_QPA_PLATFORM=offscreen unless a display is set).
#include "bench_support.h"

namespace {

constexpr int kKeys = 400;

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
  return bench::call(4300,
                     {u"-NoteIcon", u"Write it all down.", u"Save", u"Cancel", u"", u"", text})
             .size() > text.size();
}

void Open(benchmark::State& state, toolkit::Backend backend) {
  if (!bench::usable(state, backend)) return;
  bench::loadPlugin();
  const std::u16string text = longText();
  bench::ReadyClock clock(backend);
  bench::configure(backend, {"key Enter"});
  callDialog(text);  // the backend is made and its first dialog shown before timing
  bench::timeOpening(state, clock, backend, {"key Enter"}, [&] { return callDialog(text); });
}

// Each iteration is one dialog of kKeys keys; the time per key is the time from ready to the
// dialog's end, divided by the keys (the closing, once, is in it).
void Keystroke(benchmark::State& state, toolkit::Backend backend) {
  if (!bench::usable(state, backend)) return;
  bench::loadPlugin();
  const std::u16string text = longText();
  std::vector<std::string> answers;
  for (int i = 0; i < kKeys / 2; ++i) {
    answers.emplace_back("key a");
    answers.emplace_back("key Backspace");
  }
  answers.emplace_back("key Enter");
  bench::ReadyClock clock(backend);
  for (auto _ : state) {
    bench::configure(backend, answers);
    clock.reset();
    if (!callDialog(text) || !clock.seen()) {
      state.SkipWithError("the dialog did not open and answer");
      break;
    }
    const bench::Clock::time_point end = bench::Clock::now();
    state.SetIterationTime(std::chrono::duration<double>(end - clock.at()).count() / kKeys);
  }
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
