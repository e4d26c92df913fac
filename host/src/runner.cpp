#include "host/runner.h"

#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

#include "toolkit/session.h"

namespace host {

Runner::Runner(const RunOptions& options, std::FILE* out, std::FILE* err)
    : options_(options), out_(out), err_(err) {
  if (options.pluginPath.empty()) return;
  plugin_ = std::make_unique<Plugin>(options.pluginPath);
  const std::int32_t answer = plugin_->init(options.extnVersion);
  if (answer == kBadExtn) {
    std::fprintf(err_,
                 "mosa-host: the plug-in does not support host interface version %d (init "
                 "answered -1); it is not enabled\n",
                 options.extnVersion);
  } else if (answer == kDoNotEnable) {
    std::fprintf(err_, "mosa-host: the plug-in asked not to be enabled (init answered -2)\n");
  }
  evaluator_ = Evaluator(plugin_.get());
  // The host's first idle call after start-up; the toolkit gets ready for the first dialog then,
  // never during the plug-in's init.
  plugin_->idle(kFMXT_UserIdle);
  if (plugin_->enabled() && options.warmUpToolkit) toolkit::warmUp();
}

Runner::~Runner() = default;

void Runner::reportError(const std::string& name, const CalcError& e) {
  if (name.empty()) {  // the prompt: one line, so the column says it all
    std::fprintf(err_, "column %d: %s\n", e.loc().column, e.what());
  } else {
    std::fprintf(err_, "%s:%d:%d: %s\n", name.c_str(), e.loc().line, e.loc().column, e.what());
  }
}

int Runner::runScriptText(const std::string& text, const std::string& name) {
  try {
    Script script = parseScript(text);
    for (const Step& s : script.steps) {
      if (s.expr) evaluator_.check(*s.expr);
    }
    std::optional<Value> result = runScript(script, evaluator_, *this);
    if (result) print(*result);
    return kExitOk;
  } catch (const RunStopped& e) {
    return reportStop(e);
  } catch (const CalcError& e) {
    std::fflush(out_);
    reportError(name, e);
    return kExitScriptError;
  }
}

int Runner::reportStop(const RunStopped& e) {
  std::fflush(out_);
  std::fprintf(err_, "mosa-host: %s\n", e.what());
  return toolkit::stoppedForDisplay() ? kExitNoDisplay : kExitNoAnswer;
}

int Runner::runScriptFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::fprintf(err_, "mosa-host: cannot read the script \"%s\"\n", path.c_str());
    return kExitScriptError;
  }
  std::ostringstream text;
  text << in.rdbuf();
  return runScriptText(text.str(), path);
}

int Runner::evalText(const std::string& text) {
  try {
    Source source(text);
    ExprPtr e = parseCalculation(source);
    evaluator_.check(*e);
    print(evaluator_.evaluate(*e));
    return kExitOk;
  } catch (const RunStopped& e) {
    return reportStop(e);
  } catch (const CalcError& e) {
    std::fflush(out_);
    reportError("--eval", e);
    return kExitScriptError;
  }
}

void Runner::print(const Value& v) {
  std::string s = v.toUtf8();
  if (options_.crAsNewline) {
    for (char& c : s) {
      if (c == '\r') c = '\n';
    }
  }
  s.push_back('\n');
  std::fwrite(s.data(), 1, s.size(), out_);
  std::fflush(out_);
}

void Runner::afterStep() {
  if (plugin_) plugin_->idle(kFMXT_ScriptRunning);
  toolkit::pumpEventsBetweenSteps();
}

void Runner::pause(const Number& seconds) {
  idleFor(seconds.get_d(), kFMXT_ScriptPaused);
}

void Runner::idleFor(double seconds, std::uint8_t level) {
  if (!(seconds > 0)) return;
  if (seconds > 24 * 3600) seconds = 24 * 3600;
  using Clock = std::chrono::steady_clock;
  const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                           std::chrono::duration<double>(seconds));
  for (;;) {
    if (plugin_) plugin_->idle(level);
    toolkit::pumpEvents();
    const auto now = Clock::now();
    if (now >= deadline) break;
    const Clock::duration tick = std::chrono::milliseconds(1000 / 60);
    std::this_thread::sleep_for(std::min<Clock::duration>(deadline - now, tick));
  }
}

void Runner::linger() {
  idleFor(options_.lingerSeconds, kFMXT_UserIdle);
}

void Runner::printFunctions() {
  if (!plugin_) return;
  for (const fmwrapper::Registration& r : plugin_->functions()) {
    std::fprintf(out_, "%d\t%s\t%s\t%d\t%d\t%u\n", r.functionId, utf16ToUtf8(r.name).c_str(),
                 utf16ToUtf8(r.prototype).c_str(), r.minArgs, r.maxArgs, r.flags);
  }
  std::fflush(out_);
}

}  // namespace host
