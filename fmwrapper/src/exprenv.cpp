// fmx::ExprEnv: the table of registered external functions, and calculations through the host
// program's evaluator.
#include <algorithm>
#include <functional>

#include "fmwrapper/host_api.h"
#include "impl.h"

using namespace fmwrapper::detail;
using fmx::_fmxcpt;

namespace fmwrapper {
namespace {

std::vector<Registration>& table() {
  static std::vector<Registration> t;
  return t;
}

Evaluator& evaluator() {
  static Evaluator e;
  return e;
}

std::string pluginKey(const fmx::QuadChar& id) {
  const auto& c = quad(id).c;
  return std::string(c.begin(), c.end());
}

char16_t asciiLower(char16_t c) {
  return (c >= u'A' && c <= u'Z') ? c + (u'a' - u'A') : c;
}

}  // namespace

std::vector<Registration> registrations() {
  return table();
}

std::optional<Registration> findRegistration(std::u16string_view name) {
  for (const Registration& r : table()) {
    if (std::equal(r.name.begin(), r.name.end(), name.begin(), name.end(),
                   [](char16_t a, char16_t b) { return asciiLower(a) == asciiLower(b); })) {
      return r;
    }
  }
  return std::nullopt;
}

void clearRegistrations() {
  table().clear();
}

void setEvaluator(Evaluator e) {
  evaluator() = std::move(e);
}

}  // namespace fmwrapper

extern "C" {

fmx::ExprEnv* FM_ExprEnv_Constructor1(_fmxcpt& _x) noexcept {
  return construct<fmx::ExprEnv, ExprEnvObj>(_x, [] { return std::make_unique<ExprEnvObj>(); });
}

// Without an evaluator set by the host program, every calculation fails with -50.
fmx::errcode FM_ExprEnv_Evaluate(const void*, const fmx::Text& expression, fmx::Data& result,
                                 _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    const fmwrapper::Evaluator& e = fmwrapper::evaluator();
    return e ? e(expression, result) : kParamErr;
  });
}

// Registering the same plug-in id and function id again replaces the earlier registration in
// its place. A missing function, an empty name or min > max is refused with -50.
fmx::errcode FM_ExprEnv_RegisterExternalFunction(
    const fmx::QuadChar& pluginId, fmx::int16 functionId, const fmx::Text& functionName,
    const fmx::Text& functionPrototype, fmx::int16 minArgs, fmx::int16 maxArgs,
    fmx::uint32 typeFlags, fmx::ExtPluginType funcPtr, _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    if (!funcPtr || text(functionName).s.empty() || minArgs < 0 ||
        (maxArgs >= 0 && minArgs > maxArgs)) {
      return kParamErr;
    }
    fmwrapper::Registration r;
    r.pluginId = fmwrapper::pluginKey(pluginId);
    r.functionId = functionId;
    r.name = text(functionName).s;
    r.prototype = text(functionPrototype).s;
    r.minArgs = minArgs;
    r.maxArgs = maxArgs;
    r.flags = typeFlags;
    r.function = funcPtr;
    auto& t = fmwrapper::table();
    auto same = std::find_if(t.begin(), t.end(), [&](const fmwrapper::Registration& e) {
      return e.pluginId == r.pluginId && e.functionId == r.functionId;
    });
    if (same != t.end()) {
      *same = std::move(r);
    } else {
      t.push_back(std::move(r));
    }
    return kNoError;
  });
}

// -50 when nothing is registered under that pair.
fmx::errcode FM_ExprEnv_UnRegisterExternalFunction(const fmx::QuadChar& pluginId,
                                                   fmx::int16 functionId, _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    auto& t = fmwrapper::table();
    const std::string key = fmwrapper::pluginKey(pluginId);
    auto it = std::find_if(t.begin(), t.end(), [&](const fmwrapper::Registration& e) {
      return e.pluginId == key && e.functionId == functionId;
    });
    if (it == t.end()) return kParamErr;
    t.erase(it);
    return kNoError;
  });
}

void FM_ExprEnv_Delete(void* self, _fmxcpt& _x) noexcept {
  destroy<ExprEnvObj>(self, _x);
}

}  // extern "C"
