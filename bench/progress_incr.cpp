// "incr" calls per second through the host with the progress window visible, on Qt (off screen
// unless a display is set), against zenity's progress window fed the same number of updates
// through a pipe. Each repetition is one whole run: the window opened, kUpdates updates, closed.
// Ours: every update is a calculation evaluated by the host, followed by what the host does
// between script steps (an idle call and the toolkit's events); max_call_us is the slowest one,
// calls_over_1ms how many took longer than a millisecond (on a shared machine the scheduler
// alone makes a few), paints_per_s the progress bar's paint events per second. zenity needs a
// display: run this under xvfb-run when there is none. The summary after the table gives both
// medians with their ranges and their ratio.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QProgressBar>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/plugin.h"
#include "toolkit/session.h"

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kUpdates = 1'000'000;

double seconds(Clock::duration d) {
  return std::chrono::duration<double>(d).count();
}

class PaintCounter : public QObject {
 public:
  int paints = 0;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && qobject_cast<QProgressBar*>(watched)) ++paints;
    return false;
  }
};

struct Host {
  std::unique_ptr<host::Plugin> plugin;
  std::unique_ptr<host::Evaluator> evaluator;
  host::ExprPtr show, incr, stop;

  Host() {
    plugin = std::make_unique<host::Plugin>(MOSA_PLUGIN);
    plugin->init();
    evaluator = std::make_unique<host::Evaluator>(plugin.get());
    show = parse("Mosa_ProgressBar ( \"\" ; \"show\" ; " + std::to_string(kUpdates) +
                 " ; \"Counting…\" )");
    incr = parse("Mosa_ProgressBar ( \"\" ; \"incr\" ; 1 )");
    stop = parse("Mosa_ProgressBar ( \"\" ; \"stop\" )");
  }
  host::ExprPtr parse(const std::string& text) {
    host::Source source(text);
    return host::parseCalculation(source);
  }
  // One script step as mosa-host runs it.
  void step(const host::Expr& e) {
    benchmark::DoNotOptimize(evaluator->evaluate(e));
    plugin->idle(3);
    toolkit::pumpEventsBetweenSteps();
  }
};

std::unique_ptr<Host> gHost;

void BM_MosaIncr(benchmark::State& state, toolkit::Backend backend) {
  if (!gHost) {
    if (!std::getenv("MOSA_BENCH_DISPLAY")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    gHost = std::make_unique<Host>();
  }
  toolkit::SessionOptions options;
  options.backend = backend;
  toolkit::configureSession(options);
  Host& h = *gHost;
  PaintCounter counter;
  double slowest = 0, painted = 0, elapsed = 0, over1ms = 0;
  for (auto _ : state) {
    const Clock::time_point begin = Clock::now();
    h.step(*h.show);
    if (QCoreApplication::instance()) QCoreApplication::instance()->installEventFilter(&counter);
    counter.paints = 0;
    Clock::time_point last = Clock::now();
    for (int i = 0; i < kUpdates; ++i) {
      h.step(*h.incr);
      const Clock::time_point now = Clock::now();
      const double took = seconds(now - last);
      slowest = std::max(slowest, took);
      if (took > 1e-3) ++over1ms;
      last = now;
    }
    h.step(*h.stop);
    const double run = seconds(Clock::now() - begin);
    if (QCoreApplication::instance()) QCoreApplication::instance()->removeEventFilter(&counter);
    state.SetIterationTime(run);
    painted += counter.paints;
    elapsed += run;
  }
  state.SetItemsProcessed(state.iterations() * kUpdates);
  state.counters["max_call_us"] = slowest * 1e6;
  state.counters["calls_over_1ms"] = over1ms;
  state.counters["paints_per_s"] = elapsed > 0 ? painted / elapsed : 0;
}
// Headless: the host's and the plug-in's share of the time, with nothing drawn.
BENCHMARK_CAPTURE(BM_MosaIncr, headless, toolkit::Backend::Headless)
    ->Iterations(1)
    ->Repetitions(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_MosaIncr, qt, toolkit::Backend::Qt)
    ->Iterations(1)
    ->Repetitions(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_ZenityProgress(benchmark::State& state) {
  if (!std::getenv("DISPLAY")) {
    state.SkipWithError("zenity needs a display: run under xvfb-run");
    return;
  }
  // The lines zenity reads: a percentage for each update.
  std::string input;
  for (int i = 1; i <= kUpdates; ++i) input += std::to_string(i * 100LL / kUpdates) + '\n';
  for (auto _ : state) {
    int pipeFds[2];
    if (pipe(pipeFds) != 0) {
      state.SkipWithError("no pipe");
      return;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[0], 0);
    posix_spawn_file_actions_addclose(&actions, pipeFds[1]);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    char zenity[] = "zenity", progress[] = "--progress", close[] = "--auto-close",
         text[] = "--text=Counting…";
    char* argv[] = {zenity, progress, close, text, nullptr};
    const Clock::time_point begin = Clock::now();
    pid_t pid = 0;
    const int spawned = posix_spawnp(&pid, "zenity", &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeFds[0]);
    if (spawned != 0) {
      ::close(pipeFds[1]);
      state.SkipWithError("zenity cannot be started");
      return;
    }
    for (std::size_t at = 0; at < input.size();) {
      const ssize_t n = write(pipeFds[1], input.data() + at, input.size() - at);
      if (n <= 0) break;
      at += static_cast<std::size_t>(n);
    }
    ::close(pipeFds[1]);
    int status = 0;
    waitpid(pid, &status, 0);
    state.SetIterationTime(seconds(Clock::now() - begin));
  }
  state.SetItemsProcessed(state.iterations() * kUpdates);
}
BENCHMARK(BM_ZenityProgress)
    ->Iterations(1)
    ->Repetitions(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// The host's call path alone, the registration already found and the arguments made: the plug-in's
// share of a step, with nothing drawn.
void BM_MosaIncrCall(benchmark::State& state) {
  if (!gHost) {
    state.SkipWithError("run after BM_MosaIncr");
    return;
  }
  toolkit::SessionOptions options;
  options.backend = toolkit::Backend::Headless;
  toolkit::configureSession(options);
  host::Plugin& p = *gHost->plugin;
  std::optional<fmwrapper::Registration> reg;
  for (const auto& r : p.functions())
    if (r.functionId == 4310) reg = r;
  const std::vector<host::Value> show{host::Value::fromUtf8(""), host::Value::fromUtf8("show"),
                                      host::Value::number(kUpdates)};
  const std::vector<host::Value> incr{host::Value::fromUtf8(""), host::Value::fromUtf8("incr"),
                                      host::Value::number(1)};
  p.call(*reg, show);
  for (auto _ : state) benchmark::DoNotOptimize(p.call(*reg, incr));
  state.SetItemsProcessed(state.iterations());
  p.call(*reg, {host::Value::fromUtf8(""), host::Value::fromUtf8("stop")});
}
BENCHMARK(BM_MosaIncrCall)->Repetitions(5);

// The console table, then each benchmark's updates per second as median (min–max) of its
// repetitions, and the ratio of the medians.
class SummaryReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      auto found = run.counters.find("items_per_second");
      if (found != run.counters.end()) rates_[run.run_name.function_name].push_back(found->second);
    }
  }
  void Finalize() override {
    ConsoleReporter::Finalize();
    std::map<std::string, double> medians;
    for (auto& [name, rates] : rates_) {
      std::sort(rates.begin(), rates.end());
      const double median = rates[rates.size() / 2];
      medians[name] = median;
      std::printf("%-20s %12.0f updates/s (%.0f–%.0f, %zu runs)\n", name.c_str(), median,
                  rates.front(), rates.back(), rates.size());
    }
    if (medians.count("BM_MosaIncr/qt") && medians.count("BM_ZenityProgress"))
      std::printf("ratio of the medians, Qt to zenity: %.1f\n",
                  medians["BM_MosaIncr/qt"] / medians["BM_ZenityProgress"]);
  }

 private:
  std::map<std::string, std::vector<double>> rates_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  SummaryReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  // As mosa-host ends: the plug-in unloads (its window with it), then the toolkit's session ends.
  gHost.reset();
  toolkit::endSession();
  return 0;
}
