// Dialog windows and the pulled modal loop, on each backend: one walk through every kind of item as
// a person's hands (the answers) would use them, and the trace it leaves.
#include <gtest/gtest.h>

#include "toolkit_test_support.h"

using tktest::BackendTest;
using toolkit::Event;
using toolkit::ItemKind;

namespace {

// Runs the loop the way the plug-in's dialogs do, until a button (1 or 2) is hit.
std::vector<int> runUntilButton(toolkit::DialogWindow& d, std::vector<Event>* seen = nullptr) {
  std::vector<int> hits;
  for (;;) {
    Event e = d.nextEvent();
    if (seen) seen->push_back(e);
    toolkit::Outcome out = d.handleDefault(e);
    hits.push_back(out.itemHit);
    if (out.itemHit == 1 || out.itemHit == 2) return hits;
  }
}

}  // namespace

TEST_P(BackendTest, EveryItemKindFollowsTheAnswers) {
  configure({"type \"abc\"", "key Backspace", "key Tab", "type \"X\"", "choose 6 3", "choose 6 2",
             "click 7", "row 2", "double-click-row 3", "focus 10", "type \"l1\"", "key Return",
             "type \"l2\"", "click 2", "click 1"});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  d->setMenu(6, {u"Red", u"-", u"Blue"});
  d->setRows(9, {u"Apple", u"Blue", u"Banana"});
  d->setItemEnabled(2, false);
  d->setDefaultItem(1);
  d->show();
  EXPECT_EQ(d->focus(), 4);  // the first field takes the keyboard

  std::vector<Event> events;
  std::vector<int> hits = runUntilButton(*d, &events);
  EXPECT_EQ(hits.back(), 1);  // "click 2" on the disabled button did nothing
  EXPECT_EQ(d->itemText(4), u"ab");
  EXPECT_EQ(d->itemText(5), u"X");  // tabbing into a field selects its text; typing replaces it
  EXPECT_EQ(d->itemValue(6), 3);    // the separator entry cannot be chosen
  EXPECT_EQ(d->itemValue(7), 1);
  EXPECT_EQ(d->selectedRow(9), 2);
  EXPECT_EQ(d->itemText(10), u"l1\rl2");  // Return starts a new line in the text area

  bool sawDoubleClick = false;
  for (const Event& e : events)
    sawDoubleClick |= e.type == Event::Type::Click && e.item == 9 && e.doubleClick;
  EXPECT_TRUE(sawDoubleClick);
  d.reset();

  auto lines = trace();
  ASSERT_GE(lines.size(), 3u);
  EXPECT_EQ(lines.front()["ev"], "open");
  EXPECT_EQ(lines.back()["ev"], "close");
  int states = 0;
  for (const auto& line : lines) states += line["ev"] == "state";
  EXPECT_EQ(states, 15);  // one before each answer
  const auto& close = lines.back();
  EXPECT_EQ(close["dialog"], 9001);
  EXPECT_EQ(close["title"], "Every kind");
  const auto& items = close["items"];
  ASSERT_EQ(items.size(), 12u);
  EXPECT_EQ(items[0]["kind"], "button");
  EXPECT_EQ(items[0]["default"], true);
  EXPECT_EQ(items[1]["enabled"], false);
  EXPECT_EQ(items[3]["text"], "ab");
  EXPECT_EQ(items[5]["menu"], nlohmann::json::parse(R"(["Red","-","Blue"])"));
  EXPECT_EQ(items[8]["selected"], 3);  // rows count from 1 in the trace, as in the answers
  EXPECT_EQ(items[9]["focus"], true);
  EXPECT_EQ(items[9]["text"], "l1\rl2");
  EXPECT_EQ(items[11]["indeterminate"], false);
}

TEST_P(BackendTest, ItemsHideMoveAndKeepTheirState) {
  configure({});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  const toolkit::Rect screen = toolkit::screenBounds();
  const toolkit::Rect w = d->windowRect();
  EXPECT_EQ(w.width(), 420);
  EXPECT_EQ(w.left, screen.left + (screen.width() - 420) / 2);  // centred across
  d->moveTo(100, 50);
  EXPECT_EQ(d->windowRect(), (toolkit::Rect{100, 50, 520, 450}));
  d->resize(500, 420);
  EXPECT_EQ(d->windowRect().width(), 500);
  d->setItemVisible(2, false);
  EXPECT_FALSE(d->itemVisible(2));
  EXPECT_EQ(d->itemRect(2), (toolkit::Rect{250, 360, 320, 380}));  // a hidden item keeps its place
  d->setItemRect(1, {10, 10, 80, 30});
  EXPECT_EQ(d->itemRect(1), (toolkit::Rect{10, 10, 80, 30}));
  EXPECT_EQ(d->itemKind(9), ItemKind::List);
  EXPECT_FALSE(d->hasItem(13));
  d->setItemText(13, u"nothing");  // a missing item is ignored
  EXPECT_EQ(d->itemText(13), u"");
  d->setItemText(4, u"hello");
  d->setSelection(4, 1, 3);
  d->replaceSelection(4, u"EE");
  EXPECT_EQ(d->itemText(4), u"hEElo");
  EXPECT_EQ(d->selection(4), (std::pair{3, 3}));
  d->setMasked(4, true);
  d->setItemValue(12, 200);
  d->setItemMaximum(12, 100);
  EXPECT_EQ(d->itemValue(12), 200);  // the control limits what it draws, not what it holds
  d->setIndeterminate(12, true);
  EXPECT_TRUE(d->indeterminate(12));
  d->setIcon(8, toolkit::IconKind::Caution);
  EXPECT_EQ(d->icon(8), toolkit::IconKind::Caution);
  d->selectRow(9, 5);  // no such row
  EXPECT_EQ(d->selectedRow(9), -1);
}

// The view follows the caret with each backend's own font: typing where the caret was brought
// into view scrolls nothing; Home and End take the caret, and the view, to either end.
TEST_P(BackendTest, TextAreaKeepsTheCaretInViewWithItsOwnMetrics) {
  configure({"focus 10", "key x", "key Home", "key End", "click 1"});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  d->show();
  std::u16string text;
  int line101 = 0;
  for (int i = 1; i <= 200; ++i) {
    if (i == 101) line101 = static_cast<int>(text.size());
    text += u"line " + std::u16string(1, static_cast<char16_t>(u'0' + i % 10)) + u"\r";
  }
  d->setItemText(10, text);
  const int content = d->textContentHeight(10);
  const int view = d->textViewHeight(10);
  EXPECT_GT(content, 150 * d->textLineHeight(10));
  d->scrollTextTo(10, 100000);
  EXPECT_EQ(d->textScroll(10), content - view);
  d->setSelection(10, line101, line101);
  d->scrollSelectionIntoView(10);
  const int middle = d->textScroll(10);
  EXPECT_GT(middle, 0);
  EXPECT_LT(middle, content - view);

  std::vector<std::pair<Event, toolkit::Outcome>> steps;
  for (;;) {
    const Event e = d->nextEvent();
    if (e.type == Event::Type::KeyUp) continue;
    steps.emplace_back(e, d->handleDefault(e));
    if (steps.back().second.itemHit == 1) break;
  }
  ASSERT_EQ(steps.size(), 4u);
  EXPECT_EQ(steps[0].second.scrolledItem, 0);   // "x" typed where the caret could be seen
  EXPECT_EQ(steps[1].second.scrolledItem, 10);  // Home
  EXPECT_EQ(steps[2].second.scrolledItem, 10);  // End
  // The last line in view (a margin below it may stay out of sight).
  EXPECT_GE(d->textScroll(10),
            d->textContentHeight(10) - d->textViewHeight(10) - d->textLineHeight(10));
  EXPECT_EQ(d->itemText(10).substr(static_cast<std::size_t>(line101), 7), u"xline 1");
  EXPECT_EQ(d->selection(10),
            (std::pair{static_cast<int>(text.size()) + 1, static_cast<int>(text.size()) + 1}));
}

// The caret keys of a field, with Shift and Option, and forward Delete, alike on both backends.
TEST_P(BackendTest, CaretKeysAndForwardDeleteInAField) {
  configure({"focus 5", "key Home", "type \"A\"", "key End", "type \"Z\"", "key option-Left",
             "key shift-End", "key Delete", "key Left", "key Delete", "key Up", "key Delete",
             "key Down", "key Backspace", "click 1"});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  d->setItemText(5, u"hello world");
  d->show();
  runUntilButton(*d);
  // "Ahello worldZ", word "worldZ" selected and deleted, the space deleted forward, Up to the
  // start and "A" deleted forward, Down to the end and "o" deleted backward.
  EXPECT_EQ(d->itemText(5), u"hell");
  EXPECT_EQ(d->selection(5), (std::pair{4, 4}));
}

// Mouse-downs reach the dialog wherever they land; scroll bars report their parts and the
// thumb's value; "focus" only moves the focus; a key's release follows it.
TEST_P(BackendTest, ClicksAnywhereScrollBarPartsAndKeyRelease) {
  configure({"click 11 down", "click 11 pagedown", "click 11 up", "drag 11 7", "click 3", "click 8",
             "click 12", "click 2", "focus 1", "key Space"});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  d->setItemMaximum(11, 10);
  d->setPageSize(11, 4);
  d->setItemVisible(2, false);
  d->show();
  std::vector<Event> events;
  std::vector<int> values;
  int hit = 0;
  while (hit != 1) {
    events.push_back(d->nextEvent());
    hit = d->handleDefault(events.back()).itemHit;
    values.push_back(d->itemValue(11));
  }
  using P = toolkit::ScrollPart;
  ASSERT_EQ(events.size(), 9u);
  EXPECT_EQ((std::vector<P>{events[0].part, events[1].part, events[2].part, events[3].part}),
            (std::vector<P>{P::LineDown, P::PageDown, P::LineUp, P::Thumb}));
  EXPECT_EQ(events[3].value, 7);
  EXPECT_EQ(values[3], 7);
  EXPECT_EQ((std::vector<int>{values[0], values[1], values[2]}), (std::vector<int>{1, 5, 4}));
  EXPECT_EQ((std::vector<int>{events[4].item, events[5].item, events[6].item, events[7].item}),
            (std::vector<int>{3, 8, 12, 0}));   // text, icon, progress, background
  EXPECT_EQ(events[8].type, Event::Type::Key);  // Space on the focused button, not a click
  EXPECT_EQ(d->focus(), 1);
  const Event release = d->nextEvent();
  EXPECT_EQ(release.type, Event::Type::KeyUp);
  EXPECT_EQ(release.character, toolkit::kCharSpace);
}

TEST_P(BackendTest, ClipboardKeysAndPaste) {
  configure({"type \"copy me\"", "key cmd-a", "key cmd-c", "focus 5", "key cmd-a", "key cmd-v",
             "paste \" and more\"", "click 1"});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  d->show();
  std::vector<toolkit::Outcome> outcomes;
  for (;;) {
    const Event e = d->nextEvent();
    if (e.type == Event::Type::KeyUp) continue;
    toolkit::Outcome out = d->handleDefault(e);
    outcomes.push_back(out);
    if (out.itemHit == 1) break;
  }
  EXPECT_EQ(d->itemText(5), u"copy me and more");
  EXPECT_EQ(toolkit::clipboardText().value_or(u""), u" and more");
  ASSERT_GE(outcomes.size(), 2u);
  EXPECT_TRUE(outcomes[outcomes.size() - 2].textChanged);  // the paste changed field 5
  EXPECT_EQ(outcomes[outcomes.size() - 2].changedItem, 5);
}

TEST_P(BackendTest, ResizeRespectsTheMinimum) {
  configure({"resize 100 100", "resize 500 450"});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate());
  ASSERT_TRUE(d);
  d->setMinimumSize(360, 200);
  d->moveTo(0, 0);
  d->show();
  Event e = d->nextEvent();
  ASSERT_EQ(e.type, Event::Type::Resize);
  d->handleDefault(e);
  EXPECT_EQ(d->windowRect().width(), 360);
  EXPECT_EQ(d->windowRect().height(), 200);
  e = d->nextEvent();
  ASSERT_EQ(e.type, Event::Type::Resize);
  EXPECT_EQ(e.width, 500);
  d->handleDefault(e);
  EXPECT_EQ(d->windowRect().width(), 500);
}

TEST_P(BackendTest, IconsAreTracedByName) {
  configure({});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate(), true);
  ASSERT_TRUE(d);
  d->show();
  auto iconOf = [&] { return trace().back()["items"][7]["icon"]; };
  d->setIcon(8, toolkit::IconKind::Stop);
  d->commit();
  EXPECT_EQ(iconOf(), "stop");
  d->setIcon(8, toolkit::IconKind::Custom);  // no picture: nothing is drawn
  d->commit();
  EXPECT_TRUE(iconOf().is_null());
  toolkit::Image picture;
  picture.width = picture.height = 2;
  picture.pixels.assign(4, 0xFF336699u);
  d->setIcon(8, toolkit::IconKind::Custom, &picture);
  d->commit();
  EXPECT_EQ(iconOf(), "custom");
  d->setIcon(8, toolkit::IconKind::None);
  d->commit();
  EXPECT_TRUE(iconOf().is_null());
}

TEST_P(BackendTest, PersistentWindowIsTracedOnlyWhenItChanges) {
  configure({});
  auto d = toolkit::DialogWindow::create(tktest::everyKindTemplate(), true);
  ASSERT_TRUE(d);
  d->show();
  d->commit();  // nothing changed since "open"
  d->setItemValue(12, 10);
  d->commit();
  d->commit();
  d->setIndeterminate(12, true);
  d->animateStep(12);
  d->commit();
  d.reset();
  auto lines = trace();
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0]["ev"], "open");
  EXPECT_EQ(lines[1]["ev"], "state");
  EXPECT_EQ(lines[1]["items"][11]["value"], 10);
  EXPECT_EQ(lines[2]["items"][11]["indeterminate"], true);
  EXPECT_EQ(lines[3]["ev"], "close");
}

INSTANTIATE_TEST_SUITE_P(Backends, BackendTest,
                         ::testing::Values(toolkit::Backend::Headless, toolkit::Backend::Qt),
                         tktest::backendName);

// A window without fields: Tab and Shift-Tab take the focus through the buttons in reading order,
// Space presses the button that has it; a hidden or disabled button is passed over.
TEST_P(BackendTest, TabMovesAmongButtonsAndSpacePressesTheFocusedOne) {
  configure({"key Space", "key Tab", "key Tab", "key Shift-Tab", "key Shift-Tab", "key Tab",
             "key Tab", "key Space"});
  toolkit::DialogTemplate tmpl;
  tmpl.id = 9002;
  tmpl.width = 440;
  tmpl.height = 150;
  tmpl.items = {{1, ItemKind::Button, {336, 106, 424, 134}, u"Save"},
                {2, ItemKind::Button, {238, 106, 326, 134}, u"Cancel"},
                {3, ItemKind::Button, {140, 106, 228, 134}, u"Don't Save"},
                {4, ItemKind::Button, {42, 106, 130, 134}, u"Hidden"},
                {5, ItemKind::Text, {72, 16, 424, 96}, u"Save changes?"}};
  auto d = toolkit::DialogWindow::create(tmpl);
  ASSERT_TRUE(d);
  d->setItemVisible(4, false);
  d->show();
  EXPECT_EQ(d->focus(), 0);  // nothing has the focus until Tab gives it

  std::vector<int> focus;
  int hit = 0;
  while (hit == 0) {
    Event e = d->nextEvent();
    if (e.type == Event::Type::KeyUp) continue;
    hit = d->handleDefault(e).itemHit;
    focus.push_back(d->focus());
  }
  // Space with no focus does nothing; then 3, 2 (Tab), 3, 1 (Shift-Tab wraps), 3 (Tab wraps),
  // 2, and Space presses button 2.
  EXPECT_EQ(focus, (std::vector<int>{0, 3, 2, 3, 1, 3, 2, 2}));
  EXPECT_EQ(hit, 2);
  d.reset();
  auto lines = trace();
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.back()["items"][1]["focus"], true);
}
