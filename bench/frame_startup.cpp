// What the frame costs the host: init with its twenty registrations, a get-string request, and the
// switch matching every dialog call does on its 1000-byte switches text.
#include <benchmark/benchmark.h>

#include <string>

#include "fmwrapper/host_api.h"
#include "frame/frame.h"
#include "util/cstring.h"

namespace {

const std::string kBundle = MOSA_BENCH_BUNDLE;

FMX_ExternCallStruct record(fmx::uchar selector) {
  FMX_ExternCallStruct pb{};
  pb.extnVersion = 60;
  pb.whichCall = selector;
  pb.instanceID = reinterpret_cast<fmx::ptrtype>(kBundle.c_str());
  return pb;
}

void InitAndShutdown(benchmark::State& state) {
  for (auto _ : state) {
    auto init = record(kFMXT_Init);
    FMExternCallProc(&init);
    if (init.result != 51) state.SkipWithError("init refused");
    auto shutdown = record(kFMXT_Shutdown);
    FMExternCallProc(&shutdown);
  }
}
BENCHMARK(InitAndShutdown);

void FirstInitReadingTheStrings(benchmark::State& state) {
  for (auto _ : state) {
    XP_ForgetLoadedStrings();
    auto init = record(kFMXT_Init);
    FMExternCallProc(&init);
    auto shutdown = record(kFMXT_Shutdown);
    FMExternCallProc(&shutdown);
  }
}
BENCHMARK(FirstInitReadingTheStrings);

void GetString(benchmark::State& state) {
  std::u16string buffer(1024, u'\0');
  for (auto _ : state) {
    auto pb = record(kFMXT_GetString);
    pb.parm1 = 131;
    pb.parm3 = 1024;
    pb.result = reinterpret_cast<fmx::ptrtype>(buffer.data());
    FMExternCallProc(&pb);
    benchmark::DoNotOptimize(buffer[0]);
  }
}
BENCHMARK(GetString);

void SwitchMatching(benchmark::State& state) {
  std::string switches;
  while (switches.size() < 980) switches += "-Something=12 ";
  switches += "-Width=300";
  for (auto _ : state) {
    std::int32_t width = 0;
    benchmark::DoNotOptimize(XP_HasSwitch(switches.c_str(), "-StopOnESC"));
    benchmark::DoNotOptimize(XP_GetTaggedLong(switches.c_str(), "-Width", &width));
  }
}
BENCHMARK(SwitchMatching);

}  // namespace

BENCHMARK_MAIN();
