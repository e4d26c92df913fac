// The one toolkit session of the process: the backend in use, the answers still to come, the trace
// and the screenshots. Internal to the toolkit.
#pragma once

#include <cstdio>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "backend.h"
#include "toolkit/session.h"

namespace toolkit::detail {

struct Session {
  std::unique_ptr<Backend> backend;  // made on first use
  bool headless = false;             // the backend in use is the headless one
  bool displayLost = false;          // Qt was wanted but cannot start here
  toolkit::Backend requested = toolkit::Backend::Auto;
  bool configured = false;
  bool answersGiven = false;
  std::deque<Answer> answers;   // still to come
  std::deque<Answer> expanded;  // keys of a "type" or "paste" answer being delivered
  Tick waitLeft = 0;            // rest of a "wait" cut short by a deadline
  std::FILE* trace = nullptr;
  std::string shotsDir;
  std::u16string hostName = u"Mosa";
  int shotCount = 0;
  bool stopped = false;
  std::string stopMessage;
  std::function<void()> ready;  // see setReadyObserver
};

Session& session();
// The backend kind a request comes to (Auto: Qt when a display is available).
toolkit::Backend resolved(toolkit::Backend requested);
// The backend of the session, made on first use (Qt is loaded then, when chosen).
Backend& backend();
// The backend when it exists or costs nothing to make (headless); nullptr while Qt is chosen but
// not loaded yet, so reading the clock never loads Qt.
Backend* backendIfCheap();
bool scripted();
// Records the stop and returns the exception the waiting dialog throws.
NoAnswerLeft stopRun(const std::string& message);

// Trace lines (no-ops without a trace file).
void traceWindow(const char* ev, const WindowState& state, BackendWindow* window);
void traceBeep(Tick tick);
void traceAlert(int id, long number);

std::unique_ptr<Backend> makeHeadlessBackend();
// Loads the Qt module; nullptr (and a reason) when it cannot be loaded.
Backend* loadQtBackend(std::string& why);

std::string toUtf8(const std::u16string& text);
std::u16string fromUtf8(const std::string& text);

}  // namespace toolkit::detail
