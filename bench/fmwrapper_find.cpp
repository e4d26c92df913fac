// Searching a 1 MB text (about 500 000 UTF-16 units of mixed Latin and Greek) for a word near
// its end, exactly and ignoring case.
#include <benchmark/benchmark.h>

#include <string>

#include "fmx/FMWrapper.h"

namespace {

fmx::TextUniquePtr bigText() {
  std::u16string s;
  const std::u16string line =
      u"Die Stra\u00DFe f\u00FChrt nach \u03A3\u03B9\u03C3\u03CD\u03C6\u03BF\u03C2 und weiter. ";
  while (s.size() < 500000) s += line;
  s += u"ENDE DER STRASSE";
  fmx::TextUniquePtr t;
  t->AssignUnicodeWithLength(reinterpret_cast<const fmx::uint16*>(s.data()),
                             static_cast<fmx::uint32>(s.size()));
  return t;
}

fmx::TextUniquePtr pattern(const char* utf8) {
  fmx::TextUniquePtr t;
  t->Assign(utf8, fmx::Text::kEncoding_UTF8);
  return t;
}

void BM_Find(benchmark::State& state) {
  auto text = bigText();
  auto word = pattern("ENDE DER");
  for (auto _ : state) benchmark::DoNotOptimize(text->Find(*word, 0));
}
BENCHMARK(BM_Find)->Unit(benchmark::kMillisecond);

void BM_FindIgnoringCase(benchmark::State& state) {
  auto text = bigText();
  auto word = pattern(
      "ende der stra\xC3\x9F"
      "e");
  for (auto _ : state) benchmark::DoNotOptimize(text->FindIgnoringCase(*word, 0));
}
BENCHMARK(BM_FindIgnoringCase)->Unit(benchmark::kMillisecond);

void BM_FindPrevIgnoringCase(benchmark::State& state) {
  auto text = bigText();
  auto word = pattern("DIE STRASSE");
  for (auto _ : state) benchmark::DoNotOptimize(text->FindPrevIgnoringCase(*word, text->GetSize()));
}
BENCHMARK(BM_FindPrevIgnoringCase)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
