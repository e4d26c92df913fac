// How a host program sets the toolkit up for a run: which backend, the scripted answers that stand
// in for a person's hands, the trace and the screenshots. Also the event pump the host calls while
// it runs a script or idles, so windows that stay open between calls (the progress window) stay
// drawn and responsive.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace toolkit {

enum class Backend { Auto, Headless, Qt };

struct SessionOptions {
  Backend backend = Backend::Auto;   // Auto: Qt when a display is available, headless otherwise
  std::vector<std::string> answers;  // in order; one per entry, grammar as in the README
  std::string tracePath;             // JSON Lines; empty: no trace
  std::string shotsDir;              // a PNG of each dialog state (Qt only); empty: none
  // The host program's name as people write it (UTF-8): a dialog window with no title shows it.
  std::string hostName = "Mosa";
};

// Validates and applies the options. Throws std::invalid_argument with a message that names the
// offending answer when one cannot be parsed.
void configureSession(const SessionOptions& options);

// Runs pending window-system events (Qt) without blocking. Cheap when nothing is open.
void pumpEvents();
// The same between the steps of a script: at most once a millisecond, so a loop of fast steps pays
// for the window system a thousand times a second rather than on every step.
void pumpEventsBetweenSteps();

// Loads and prepares the Qt backend ahead of the first dialog. Hosts call it from their first idle
// calls after start-up, never during the plug-in's init.
void warmUp();

// Called when a dialog window, once shown, first waits for input: the moment it is ready for a
// person. Benchmarks time the way to it; empty: nothing is called.
void setReadyObserver(std::function<void()> observer);

// Closes the trace and releases backend resources; called once by the host before it exits.
void endSession();

// True once a dialog waited for a person while answers drive the run and none was left (the
// dialog itself caught toolkit::NoAnswerLeft). The host then stops the run: it prints
// stopMessage() on stderr and exits with status 3.
bool sessionStopped();
std::string stopMessage();

// Whether answers drive this run (any were given, or the backend is headless).
bool scriptedSession();

// True when the run stopped because a dialog waited for a person while Qt, wanted, could not start
// (a display that cannot be opened, no platform plug-in that loads): the toolkit said so once on
// standard error and ran headless from then on. The host exits with a status of its own.
bool stoppedForDisplay();

}  // namespace toolkit
