#include "toolkit/session.h"

#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include "session_state.h"

namespace toolkit::detail {

Session& session() {
  static Session s;
  return s;
}

Tick realTicks() {
  using Clock = std::chrono::steady_clock;
  static const Clock::time_point start = Clock::now();
  auto elapsed =
      std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
  return static_cast<Tick>(elapsed * 60 / 1000);
}

namespace {

bool displayAvailable() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* value = std::getenv(name);
    if (value && *value) return true;
  }
  return false;
}

}  // namespace

toolkit::Backend resolved(toolkit::Backend requested) {
  if (requested != toolkit::Backend::Auto) return requested;
  return displayAvailable() ? toolkit::Backend::Qt : toolkit::Backend::Headless;
}

Backend& backend() {
  Session& s = session();
  if (s.backend) return *s.backend;
  if (resolved(s.requested) == toolkit::Backend::Qt) {
    std::string why;
    s.backend.reset(loadQtBackend(why));
    if (!s.backend) {
      // Said once: the headless backend made below serves the rest of the run.
      std::fprintf(stderr, "mosa: %s; the dialogs run headless for the rest of this run\n",
                   why.c_str());
      s.displayLost = true;
    }
  }
  s.headless = !s.backend;
  if (!s.backend) s.backend = makeHeadlessBackend();
  return *s.backend;
}

Backend* backendIfCheap() {
  Session& s = session();
  if (s.backend) return s.backend.get();
  if (resolved(s.requested) == toolkit::Backend::Headless) return &backend();
  return nullptr;
}

bool scripted() {
  Session& s = session();
  return s.answersGiven || resolved(s.requested) == toolkit::Backend::Headless ||
         (s.backend && s.headless);
}

NoAnswerLeft stopRun(const std::string& message) {
  Session& s = session();
  if (!s.stopped) {
    s.stopped = true;
    s.stopMessage = message;
  }
  return NoAnswerLeft(s.stopMessage);
}

}  // namespace toolkit::detail

namespace toolkit {

using detail::session;

void configureSession(const SessionOptions& options) {
  // Parse everything before changing anything, so a bad answer leaves the session as it was.
  std::deque<detail::Answer> answers;
  for (const std::string& line : options.answers) {
    auto first = line.find_first_not_of(" \t\r");
    if (first == std::string::npos || line[first] == '#') continue;  // blank lines and comments
    answers.push_back(detail::parseAnswer(line));
  }
  std::FILE* trace = nullptr;
  if (!options.tracePath.empty()) {
    trace = std::fopen(options.tracePath.c_str(), "w");
    if (!trace) throw std::invalid_argument("cannot write the trace file " + options.tracePath);
  }
  detail::Session& s = session();
  if (s.trace) std::fclose(s.trace);
  s.trace = trace;
  bool wantHeadless = detail::resolved(options.backend) == toolkit::Backend::Headless;
  if (s.backend && s.headless != wantHeadless) s.backend.reset();
  s.requested = options.backend;
  s.answers = std::move(answers);
  s.expanded.clear();
  s.waitLeft = 0;
  s.answersGiven = !s.answers.empty();
  s.shotsDir = options.shotsDir;
  s.hostName = detail::fromUtf8(options.hostName);
  s.shotCount = 0;
  s.stopped = false;
  s.stopMessage.clear();
  s.configured = true;
}

void pumpEvents() {
  detail::Session& s = session();
  if (s.backend) s.backend->pump();
}

void pumpEventsBetweenSteps() {
  using Clock = std::chrono::steady_clock;
  static Clock::time_point last;
  const Clock::time_point now = Clock::now();
  if (now - last < std::chrono::milliseconds(1)) return;
  last = now;
  pumpEvents();
}

void warmUp() {
  detail::Session& s = session();
  if (s.backend) return;
  detail::backend().warmUp();
}

void setReadyObserver(std::function<void()> observer) {
  session().ready = std::move(observer);
}

void endSession() {
  detail::Session& s = session();
  if (s.trace) {
    std::fclose(s.trace);
    s.trace = nullptr;
  }
  // The Qt module itself stays loaded: unloading Qt while the process runs is not safe.
  s.backend.reset();
  s.headless = false;
}

bool sessionStopped() {
  return session().stopped;
}
std::string stopMessage() {
  return session().stopMessage;
}
bool scriptedSession() {
  return detail::scripted();
}
bool stoppedForDisplay() {
  const detail::Session& s = session();
  return s.stopped && s.displayLost && !s.answersGiven;
}

}  // namespace toolkit
