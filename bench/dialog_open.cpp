// From the call of Mosa_Dialog to the dialog shown and ready for input: the moment the dialog, on
// screen, first waits for input (the toolkit's ready observer). On Qt the window's pending events
// (expose, layout, paint) are run first, so the time holds the first drawing. The answered click
// that then closes the dialog is not in the time (the counter call_ms has the whole call).
// first_*: the first dialog of the process, which on Qt loads the module and makes the
// QApplication; first_qt_warmed: the first dialog after the host's idle warm-up (run it on its own,
// --benchmark_filter=first_qt_warmed); steady_*: every later dialog. Headless, and Qt
// (QT_QPA_PLATFORM=offscreen unless a display is set).
#include "bench_support.h"

namespace {

bool callDialog() {
  return bench::call(4302, {u"-CautionIcon", u"Save the changes to the document before closing?",
                            u"Save", u"Cancel", u"Don't Save"}) == u"1";
}

bool gQtUsed = false;  // a Qt backend was made in this process

const std::vector<std::string> kAnswers = {"click 1"};

enum class Start { Cold, Warmed, Steady };

void OpenDialog(benchmark::State& state, toolkit::Backend backend, Start start) {
  const bool qt = backend == toolkit::Backend::Qt;
  if (!bench::usable(state, backend)) return;
  if (qt && start == Start::Warmed && gQtUsed) {
    state.SkipWithError("Qt is loaded already: run it alone (--benchmark_filter=first_qt_warmed)");
    return;
  }
  bench::loadPlugin();
  bench::ReadyClock clock(backend);
  if (start == Start::Warmed) {
    bench::configure(backend, kAnswers);
    toolkit::warmUp();  // as the host does in its first idle calls
  }
  if (start == Start::Steady) {
    bench::configure(backend, kAnswers);
    callDialog();  // the backend is made and its first dialog shown before timing
  }
  if (qt) gQtUsed = true;
  bench::timeOpening(state, clock, backend, kAnswers, callDialog);
}

}  // namespace

// The first dialog of the process on each backend, then the steady state.
BENCHMARK_CAPTURE(OpenDialog, first_headless, toolkit::Backend::Headless, Start::Cold)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, first_qt, toolkit::Backend::Qt, Start::Cold)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, steady_headless, toolkit::Backend::Headless, Start::Steady)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(OpenDialog, steady_qt, toolkit::Backend::Qt, Start::Steady)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, first_qt_warmed, toolkit::Backend::Qt, Start::Warmed)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
