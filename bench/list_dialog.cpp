// The list dialog at its limits: Mosa_ListDialog with 16,000 one-character rows (and, to compare,
// 10), from the call to the dialog shown and ready for input (on Qt its pending events run first,
// so the time holds the first drawing), in the steady state (the first dialog of the process is not
// timed); and one type-select keystroke in that list, the worst one: the only row with its letter
// is the last, so each key searches every row (and every second key wraps round to search them
// again). The keys are answers, so on Qt they arrive through the real window. Headless, and Qt
// (QT_QPA_PLATFORM=offscreen unless a display is set).
#include "bench_support.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "frame/frame.h"

namespace {

constexpr int kRows = 16000;  // the keystroke's list; the list to open is the argument
constexpr int kKeys = 100;    // keystrokes per timed dialog

using bench::Clock;

// "a|a|…|a|z": every row but the last starts with a.
std::string listText(int rows) {
  std::string text;
  text.reserve(2 * static_cast<std::size_t>(rows));
  for (int i = 1; i < rows; ++i) text += "a|";
  return text + "z";
}

// The function's arguments, made once: the host has them ready before it calls. Kept to the end
// of the process.
const fmx::DataVect& listArgs(int rows) {
  static std::map<int, fmx::DataVectUniquePtr*> made;
  fmx::DataVectUniquePtr*& args = made[rows];
  if (args) return **args;
  args = new fmx::DataVectUniquePtr;
  fmx::LocaleUniquePtr locale;
  for (const std::string& text :
       {std::string("-NoteIcon"), std::string("Pick a row."), std::string("OK"),
        std::string("Cancel"), std::string(), std::string(), listText(rows)}) {
    fmx::TextUniquePtr t;
    t->Assign(text.c_str(), fmx::Text::kEncoding_UTF8);
    fmx::DataUniquePtr data;
    data->SetAsText(*t, *locale);
    (*args)->PushBack(*data);
  }
  return **args;
}

// Shows the list dialog (answered as the session says); true when it answered button 1.
bool callListDialog(int rows) {
  const fmx::DataVect& args = listArgs(rows);
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  ZkMosa7_Dispatch(4309, *env, args, *result);
  const fmx::Text& answer = result->GetAsText();
  fmx::uint16 head[2] = {};
  if (answer.GetSize() < 2) return false;
  answer.GetUnicode(head, 0, 2);
  return head[0] == u'1' && head[1] == u'|';
}

bool prepare(benchmark::State& state, toolkit::Backend backend) {
  if (!bench::usable(state, backend)) return false;
  bench::loadPlugin();
  bench::configure(backend, {"click 1"});
  callListDialog(10);  // the backend is made and its first dialog shown before timing
  return true;
}

// From the call to the list shown and ready for input.
void ListOpen(benchmark::State& state, toolkit::Backend backend) {
  if (!prepare(state, backend)) return;
  bench::ReadyClock clock(backend);
  const int rows = static_cast<int>(state.range(0));
  bench::timeOpening(state, clock, backend, {"click 1"}, [rows] { return callListDialog(rows); });
}

// One type-select keystroke: the time from the dialog ready to its end, over the keys it took
// (the closing click is shared among them).
void TypeSelect(benchmark::State& state, toolkit::Backend backend) {
  if (!prepare(state, backend)) return;
  std::vector<std::string> answers(kKeys, "key z");
  answers.push_back("click 1");
  bench::ReadyClock clock(toolkit::Backend::Headless);  // the keys are timed, not the drawing
  for (auto _ : state) {
    bench::configure(backend, answers);
    clock.reset();
    const bool answered = callListDialog(kRows);
    const Clock::time_point end = Clock::now();
    if (!answered || !clock.seen()) {
      state.SkipWithError("the dialog did not open and answer");
      break;
    }
    state.SetIterationTime(std::chrono::duration<double>(end - clock.at()).count() / kKeys);
  }
}

}  // namespace

BENCHMARK_CAPTURE(ListOpen, headless, toolkit::Backend::Headless)
    ->Arg(10)
    ->Arg(kRows)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ListOpen, qt, toolkit::Backend::Qt)
    ->Arg(10)
    ->Arg(kRows)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
// The time of an iteration is that of one key, so the library's own choice of the iteration
// count would run thousands of dialogs.
BENCHMARK_CAPTURE(TypeSelect, headless, toolkit::Backend::Headless)
    ->Iterations(10)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TypeSelect, qt, toolkit::Backend::Qt)
    ->Iterations(10)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
