// The interactive prompt: line editing and history through libedit; each line is a script step
// or a calculation, run at once.
#include <editline/readline.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/runner.h"

namespace host {

namespace {

void printHelp() {
  std::printf(
      "Type a calculation to see its value, or a script step:\n"
      "  Mosa_Version ( \"-getversionstring\" )\n"
      "  Set Variable [ $name ; Value: \"World\" ]\n"
      "  \"Hello \" & $name & ¶ & Length ( $name )\n"
      "Commands:\n"
      "  :functions  the plug-in's functions with their argument counts\n"
      "  :help       this text\n"
      "  :quit       leave (so does Ctrl-D)\n");
}

}  // namespace

int runPrompt(Runner& runner) {
  // The host asks the plug-in for its name (string 128) to show which one is loaded.
  const std::u16string name = runner.plugin() ? runner.plugin()->getString(kPluginNameString) : u"";
  if (!name.empty()) std::printf("mosa-host: %s is loaded\n", utf16ToUtf8(name).c_str());
  std::printf("mosa-host: type :help for help, :quit to leave\n");
  for (;;) {
    char* raw = readline("mosa> ");
    if (!raw) break;
    std::string text(raw);
    std::free(raw);
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) continue;
    add_history(text.c_str());
    const std::string word = text.substr(first, text.find_last_not_of(" \t") - first + 1);
    if (word == ":quit" || word == ":q" || word == ":exit") break;
    if (word == ":help" || word == ":h") {
      printHelp();
      continue;
    }
    if (word == ":functions") {
      runner.printFunctions();
      continue;
    }
    if (word[0] == ':') {
      std::printf("unknown command %s; type :help\n", word.c_str());
      continue;
    }
    // With scripted answers, a dialog that finds none left ends the session as it ends a script.
    if (runner.runScriptText(text, "") == kExitNoAnswer) return kExitNoAnswer;
  }
  return kExitOk;
}

}  // namespace host
