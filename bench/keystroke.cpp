// One keystroke (the key going down and coming up, each through nextEvent and the default
// handling, as a dialog's loop runs them) in an edit field beside a list of 16,000 rows, as in the
// list dialog. The keys are answers, so on Qt they arrive through the real field. Headless, and
// Qt (QT_QPA_PLATFORM=offscreen unless a display is set).
#include <string>
#include <vector>

#include "bench_support.h"
#include "toolkit/dialog.h"

namespace {

constexpr int kRows = 16000;
constexpr int kBatch = 500;  // keys per batch of answers; the field is emptied between batches

toolkit::DialogTemplate listDialog() {
  using K = toolkit::ItemKind;
  toolkit::DialogTemplate t;
  t.id = 24266;
  t.width = 360;
  t.height = 400;
  t.items = {{1, K::Button, {270, 360, 340, 384}, u"OK"},
             {2, K::Edit, {20, 20, 340, 44}, u""},
             {3, K::List, {20, 56, 340, 340}, u""}};
  return t;
}

void keystroke(benchmark::State& state, toolkit::Backend backend) {
  const std::vector<std::string> keys(kBatch, "key a");
  toolkit::configureSession({.backend = backend, .answers = keys});
  auto dialog = toolkit::DialogWindow::create(listDialog());
  if (!dialog) {
    state.SkipWithError("no dialog window on this backend");
    return;
  }
  std::vector<std::u16string> rows;
  for (int i = 0; i < kRows; ++i) rows.push_back(u"Row " + std::u16string(1, u'A' + i % 26));
  dialog->setRows(3, rows);
  dialog->show();
  int left = kBatch;
  for (auto _ : state) {
    if (left == 0) {
      state.PauseTiming();
      toolkit::configureSession({.backend = backend, .answers = keys});
      dialog->setItemText(2, u"");
      left = kBatch;
      state.ResumeTiming();
    }
    for (int i = 0; i < 2; ++i) dialog->handleDefault(dialog->nextEvent());  // down, then up
    --left;
  }
  dialog.reset();
  toolkit::endSession();
}

BENCHMARK_CAPTURE(keystroke, headless, toolkit::Backend::Headless)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(keystroke, qt, toolkit::Backend::Qt)->Unit(benchmark::kMicrosecond);

}  // namespace
