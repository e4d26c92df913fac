// mosa-host: loads a plug-in and runs a script, one calculation, or an interactive prompt.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/runner.h"
#include "toolkit/session.h"

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

// The lines of an answers file.
std::vector<std::string> readAnswers(const std::string& path) {
  std::ifstream in(path);
  if (!in) throw std::invalid_argument("cannot read the answers file \"" + path + "\"");
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// The answers of --answers files and --answer actions, in the order the command line gives them.
std::vector<std::string> answersInOrder(const CLI::App& app, const std::vector<std::string>& files,
                                        const std::vector<std::string>& actions) {
  std::vector<std::string> answers;
  size_t nextFile = 0, nextAction = 0;
  for (const CLI::Option* option : app.parse_order()) {
    if (option->get_name() == "--answers" && nextFile < files.size()) {
      for (std::string& line : readAnswers(files[nextFile++])) answers.push_back(std::move(line));
    } else if (option->get_name() == "--answer" && nextAction < actions.size()) {
      answers.push_back(actions[nextAction++]);
    }
  }
  return answers;
}

// Closes the toolkit's session after everything else, the plug-in's shut-down included.
struct SessionEnd {
  ~SessionEnd() { toolkit::endSession(); }
};

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"mosa-host: runs the Mosa plug-in the way the host application does"};
  host::RunOptions options;
  std::string script, eval;
  int extnVersion = host::kNewestExtnVersion;
  bool listFunctions = false;
  toolkit::Backend backend = toolkit::Backend::Auto;
  std::vector<std::string> answerFiles, answerActions;
  toolkit::SessionOptions session;
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
  std::string ui;
  app.add_option("--ui", ui,
                 "headless or qt: where dialogs run (default: Qt when a display is available, "
                 "headless otherwise)");
  // Each occurrence takes exactly one value, so "--answer 'click 1' script.fmscript" leaves the
  // script to be the script.
  app.add_option("--answers", answerFiles, "a file of answers, one action per line (repeatable)")
      ->check(CLI::ExistingFile)
      ->expected(1)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  app.add_option("--answer", answerActions, "one answer, such as 'click 2' (repeatable, in order)")
      ->expected(1)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  app.add_option("--trace", session.tracePath, "write each dialog state as JSON Lines to FILE");
  app.add_option("--shots", session.shotsDir, "save a PNG of each dialog state in DIR (Qt only)");
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
  options.warmUpToolkit = true;
  if (ui == "headless") {
    backend = toolkit::Backend::Headless;
  } else if (ui == "qt") {
    backend = toolkit::Backend::Qt;
  } else if (!ui.empty()) {
    std::fprintf(stderr, "mosa-host: --ui takes headless or qt, not \"%s\"\n", ui.c_str());
    return host::kExitScriptError;
  }

  SessionEnd sessionEnd;
  try {
    session.backend = backend;
    session.hostName = "Mosa Host";
    session.answers = answersInOrder(app, answerFiles, answerActions);
    if (!session.shotsDir.empty()) {
      std::error_code ec;
      std::filesystem::create_directories(session.shotsDir, ec);
      if (ec) {
        throw std::invalid_argument("cannot make the shots folder \"" + session.shotsDir +
                                    "\": " + ec.message());
      }
      if (backend == toolkit::Backend::Headless) {
        std::fprintf(stderr, "mosa-host: --shots takes pictures on the Qt toolkit only\n");
      }
    }
    toolkit::configureSession(session);
  } catch (const std::invalid_argument& e) {
    std::fprintf(stderr, "mosa-host: %s\n", e.what());
    return host::kExitScriptError;
  }

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
