// Random text as a script and as a calculation: parsing and evaluating never crash, whatever the
// input; errors come out as CalcError only.
#include <cstddef>
#include <cstdint>
#include <string>

#include "host/calc.h"
#include "host/script.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    host::parseScript(text);
  } catch (const host::CalcError&) {
  }
  try {
    host::Source source(text);
    host::ExprPtr e = host::parseCalculation(source);
    host::Evaluator ev;
    ev.allowFiles(false);
    ev.check(*e);
    (void)ev.evaluate(*e).toUtf8();
  } catch (const host::CalcError&) {
  }
  return 0;
}
