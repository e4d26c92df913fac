// Parsing the switches of one dialog call (a 1000-byte text, the most a call reads), and one
// setter call with nine inputs through the host library.
#include <benchmark/benchmark.h>

#include <string>

#include "fmx/FMWrapper.h"
#include "frame/handlers.h"
#include "model/switches.h"

namespace {

std::string LongSwitches(bool withTitle) {
  std::string s = "-CautionIcon -ReturnButtonText -DefaultButton2 -StartField3 -popup2 -Checkbox4 ";
  while (s.size() < 960) s += "-SomeUnknownSwitch ";
  if (withTitle) s += "-dialogName=Orders.2024";
  s.resize(999, ' ');
  return s;
}

void BM_ParseSwitches(benchmark::State& state) {
  const std::string switches = LongSwitches(state.range(0) != 0);
  ParSwitches7Tag rec;
  for (auto _ : state) {
    Zk7ParseSwitches(switches.c_str(), kDlgKindInput, &rec);
    benchmark::DoNotOptimize(rec.icon);
  }
}
BENCHMARK(BM_ParseSwitches)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void BM_SetInputNineRows(benchmark::State& state) {
  fmx::DataVectUniquePtr args;
  fmx::LocaleUniquePtr locale;
  for (int n = 0; n < 10; ++n) {
    fmx::TextUniquePtr txt;
    txt->Assign(n == 0 ? "" : "Some default input text", fmx::Text::kEncoding_UTF8);
    fmx::DataUniquePtr data;
    data->SetAsText(*txt, *locale);
    args->PushBack(*data);
  }
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  for (auto _ : state) benchmark::DoNotOptimize(ZkMosa7_DoSetInput(4312, *env, *args, *result));
}
BENCHMARK(BM_SetInputNineRows)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
