// The input dialog with nine inputs (edit fields, two pop-ups, a check box, a bullet field), from
// the call of Mosa_InputDialog to the dialog shown and ready for input (the toolkit's ready
// observer; on Qt after the window's pending events, so the first drawing is in the time). The
// answered click that closes it is not in the time; the counter call_ms has the whole call.
// first_headless: the first dialog of the process; first_qt_warmed: the first on Qt, after the
// host's idle warm-up (so these two run in this order, before any other); steady_*: every later
// dialog. Qt runs with QT_QPA_PLATFORM=offscreen unless a display is set.
#include "bench_support.h"

namespace {

// Loads the plug-in and stores the labels, inputs and pop-up items the dialog shows.
void loadPlugin() {
  static bool done = false;
  if (done) return;
  done = true;
  bench::loadPlugin();
  bench::call(4313, {u"", u"Name", u"E-mail", u"Phone", u"Country", u"Plan", u"Password", u"Street",
                     u"City", u"Send me the newsletter"});
  bench::call(4312, {u"", u"Ada Lovelace", u"ada@example.org", u"", u"Norway", u"Team", u"",
                     u"Main Street 1", u"Oslo", u"1"});
  bench::call(4315, {u"-popup4", u"France\rGermany\rNorway\rUnited Kingdom\r-\rOther"});
  bench::call(4315, {u"-popup5", u"Personal\rTeam\rEnterprise"});
}

bool callDialog() {
  return bench::call(4308, {u"-NoteIcon -popup4 -popup5 -Bullet6 -Checkbox9", u"9",
                            u"Create an account for the new colleague.", u"Create", u"Cancel"}) ==
         u"|Ada Lovelace|ada@example.org||Norway|Team||Main Street 1|Oslo|1";
}

const std::vector<std::string> kAnswers = {"click 1"};

enum class Start { Cold, Warmed, Steady };

void InputDialog(benchmark::State& state, toolkit::Backend backend, Start start) {
  if (!bench::usable(state, backend)) return;
  loadPlugin();
  bench::ReadyClock clock(backend);
  bench::configure(backend, kAnswers);
  if (start == Start::Warmed) toolkit::warmUp();  // as the host does in its first idle calls
  if (start == Start::Steady) callDialog();       // the backend and its first dialog come first
  bench::timeOpening(state, clock, backend, kAnswers, callDialog);
}

}  // namespace

BENCHMARK_CAPTURE(InputDialog, first_headless, toolkit::Backend::Headless, Start::Cold)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InputDialog, first_qt_warmed, toolkit::Backend::Qt, Start::Warmed)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InputDialog, steady_headless, toolkit::Backend::Headless, Start::Steady)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(InputDialog, steady_qt, toolkit::Backend::Qt, Start::Steady)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
