// One run of the host program: the plug-in, the evaluator and the output, shared by script files,
// --eval and the interactive prompt.
#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "host/plugin.h"
#include "host/script.h"

namespace host {

struct RunOptions {
  std::string pluginPath;  // empty: no plug-in
  std::int16_t extnVersion = kNewestExtnVersion;
  bool crAsNewline = false;
  double lingerSeconds = 0;
  // Prepare the toolkit's backend in the first idle call (mosa-host does; tests of the host
  // engine need not).
  bool warmUpToolkit = false;
};

// Exit statuses of the program.
// kExitNoDisplay: a dialog waited for a person, but the display could not be used.
enum ExitStatus { kExitOk = 0, kExitScriptError = 2, kExitNoAnswer = 3, kExitNoDisplay = 4 };

class Runner : public ScriptHost {
 public:
  // Loads and initialises the plug-in; throws PluginLoadError.
  explicit Runner(const RunOptions& options, std::FILE* out = stdout, std::FILE* err = stderr);
  ~Runner() override;

  Plugin* plugin() { return plugin_.get(); }
  Evaluator& evaluator() { return evaluator_; }

  // Runs a script's text; `name` is how error messages name it (empty: the prompt). Returns an
  // exit status.
  int runScriptText(const std::string& text, const std::string& name);
  int runScriptFile(const std::string& path);
  int evalText(const std::string& text);
  // Idles at level 0 for the --linger time.
  void linger();
  // Prints the registered functions, one per line: id, name, prototype, min, max, flags.
  void printFunctions();

  void print(const Value& v) override;
  void afterStep() override;
  void pause(const Number& seconds) override;

  // Idle calls in ticks of 1/60 second while `seconds` pass, at `level`.
  void idleFor(double seconds, std::uint8_t level);

 private:
  void reportError(const std::string& name, const CalcError& e);
  int reportStop(const RunStopped& e);

  RunOptions options_;
  std::FILE* out_;
  std::FILE* err_;
  std::unique_ptr<Plugin> plugin_;
  Evaluator evaluator_;
};

}  // namespace host
