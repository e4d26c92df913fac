// What the dialog benchmarks share: the plug-in loaded from the build's bundle folder, calls of its
// functions with texts, a toolkit session driven by answers, the moment a dialog is ready for
// input, and the main function (bench_support.cpp) that ends the toolkit session before the
// libraries unload.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/session.h"

namespace bench {

// Initialises the plug-in once per process, with the build's bundle folder.
void loadPlugin();

// Whether the backend can run here; when the Qt module is not built, skips the benchmark.
bool usable(benchmark::State& state, toolkit::Backend backend);

// Calls plug-in function `id` with these texts; answers its result.
std::u16string call(short id, const std::vector<std::u16string>& texts);

// A new session on `backend` with these answers.
void configure(toolkit::Backend backend, std::vector<std::string> answers);

using Clock = std::chrono::steady_clock;

// While it lives, records when each dialog is shown and ready for input; on Qt the window's
// pending events (the first drawing among them) are run first.
class ReadyClock {
 public:
  explicit ReadyClock(toolkit::Backend backend);
  ~ReadyClock();
  ReadyClock(const ReadyClock&) = delete;
  ReadyClock& operator=(const ReadyClock&) = delete;

  void reset() { ready_ = {}; }
  bool seen() const { return ready_ != Clock::time_point{}; }
  Clock::time_point at() const { return ready_; }

 private:
  Clock::time_point ready_;
};

// Times each iteration from the call to its dialog ready, on a new session with `answers`;
// `callDialog` answers whether the dialog answered as it should. The counter call_ms has the
// whole call.
void timeOpening(benchmark::State& state, ReadyClock& clock, toolkit::Backend backend,
                 const std::vector<std::string>& answers, const std::function<bool()>& callDialog);

}  // namespace bench
