// Calls per second through the host's call path into the plug-in, for Mosa_Version: the
// registration already found, by name, and as a whole parsed calculation.
#include <benchmark/benchmark.h>

#include <memory>
#include <optional>
#include <vector>

#include "host/plugin.h"

namespace {

host::Plugin& plugin() {
  static std::unique_ptr<host::Plugin> p = [] {
    auto loaded = std::make_unique<host::Plugin>(MOSA_PLUGIN);
    loaded->init();
    return loaded;
  }();
  return *p;
}

void BM_CallRegistration(benchmark::State& state) {
  host::Plugin& p = plugin();
  std::optional<fmwrapper::Registration> reg;
  for (const auto& r : p.functions()) {
    if (r.functionId == 1) reg = r;
  }
  if (!reg) {
    state.SkipWithError("Mosa_Version (id 1) is not registered");
    return;
  }
  const std::vector<host::Value> args{host::Value::fromUtf8("-getversionnumber")};
  for (auto _ : state) benchmark::DoNotOptimize(p.call(*reg, args));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CallRegistration);

void BM_CallByName(benchmark::State& state) {
  host::Plugin& p = plugin();
  const std::vector<host::Value> args{host::Value::fromUtf8("-getversionnumber")};
  for (auto _ : state) benchmark::DoNotOptimize(p.call(u"Mosa_Version", args));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CallByName);

void BM_EvaluateCalculation(benchmark::State& state) {
  host::Evaluator ev(&plugin());
  host::Source src("Mosa_Version ( \"-getversionstring\" )");
  host::ExprPtr e = host::parseCalculation(src);
  for (auto _ : state) benchmark::DoNotOptimize(ev.evaluate(*e));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_EvaluateCalculation);

}  // namespace

BENCHMARK_MAIN();
