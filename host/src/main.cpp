// mosa-host: loads a plug-in and runs a script, one calculation, or an interactive prompt.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <string>

#include "host/runner.h"

namespace host {
int runPrompt(Runner& runner);
}

namespace {

std::string defaultPluginPath() {
  char buffer[PATH_MAX];
  const ssize_t n = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
  if (n <= 0) return "Mosa.fmx";
  buffer[n] = '\0';
  return (std::filesystem::path(buffer).parent_path() / "Mosa.fmx").string();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"mosa-host: runs the Mosa plug-in the way the host application does"};
  host::RunOptions options;
  std::string script, eval;
  int extnVersion = host::kNewestExtnVersion;
  bool listFunctions = false;
  app.add_option("SCRIPT", script, "script file to run");
  app.add_option("--plugin", options.pluginPath,
                 "plug-in module (default: Mosa.fmx beside mosa-host)");
  app.add_option("--extn-version", extnVersion, "host interface version given to init")
      ->capture_default_str()
      ->check(CLI::Range(-32768, 32767));
  app.add_flag("--functions", listFunctions, "print the registered functions and exit");
  app.add_option("--eval", eval, "evaluate one calculation and print its result");
  app.add_flag("--cr-as-newline", options.crAsNewline, "print carriage returns as line breaks");
  app.add_option("--linger", options.lingerSeconds, "idle this many seconds after the script")
      ->check(CLI::NonNegativeNumber);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const int code = app.exit(e);
    return code == 0 ? 0 : host::kExitScriptError;
  }
  if (!script.empty() && !eval.empty()) {
    std::fprintf(stderr, "mosa-host: give a script or --eval, not both\n");
    return host::kExitScriptError;
  }
  options.extnVersion = static_cast<std::int16_t>(extnVersion);
  if (options.pluginPath.empty()) options.pluginPath = defaultPluginPath();

  try {
    host::Runner runner(options);
    int status = host::kExitOk;
    if (listFunctions) {
      runner.printFunctions();
    } else if (!eval.empty()) {
      status = runner.evalText(eval);
    } else if (!script.empty()) {
      status = runner.runScriptFile(script);
    } else {
      status = host::runPrompt(runner);
    }
    if (status == host::kExitOk && !listFunctions) runner.linger();
    return status;
  } catch (const host::PluginLoadError& e) {
    std::fprintf(stderr, "mosa-host: %s\n", e.what());
    return host::kExitScriptError;
  }
}
