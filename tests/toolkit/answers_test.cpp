// The answer grammar: every form a scenario may write, and refusals that name the bad answer.
#include <gtest/gtest.h>

#include "backend.h"
#include "toolkit/session.h"

using toolkit::detail::Answer;
using toolkit::detail::parseAnswer;

TEST(Answers, EveryFormParses) {
  EXPECT_EQ(parseAnswer("click 3").item, 3);
  EXPECT_EQ(parseAnswer("focus 6").kind, Answer::Kind::Focus);
  Answer choose = parseAnswer("choose 24 2");
  EXPECT_EQ(choose.item, 24);
  EXPECT_EQ(choose.menuItem, 2);
  EXPECT_EQ(parseAnswer("row 2").row, 2);
  EXPECT_EQ(parseAnswer("double-click-row 1").kind, Answer::Kind::DoubleClickRow);
  Answer resize = parseAnswer("resize 600 400");
  EXPECT_EQ(resize.width, 600);
  EXPECT_EQ(resize.height, 400);
  EXPECT_EQ(parseAnswer("wait 240").ticks, 240u);
  EXPECT_EQ(parseAnswer("type \"say \\\"hi\\\" \\\\ ¶\"").text, u"say \"hi\" \\ ¶");
  EXPECT_EQ(parseAnswer("paste \"\"").text, u"");
  EXPECT_EQ(parseAnswer("  click   1  ").item, 1);
  EXPECT_EQ(parseAnswer("click 5 pageup").part, toolkit::ScrollPart::PageUp);
  Answer drag = parseAnswer("drag 5 120");
  EXPECT_EQ(drag.kind, Answer::Kind::Drag);
  EXPECT_EQ(drag.value, 120);
}

TEST(Answers, KeysGiveTheFilterCharacters) {
  struct Case {
    const char* answer;
    char16_t character;
    unsigned modifiers;
  };
  const Case cases[] = {
      {"key Return", 13, 0},
      {"key Enter", 3, 0},
      {"key Escape", 27, 0},
      {"key Tab", 9, 0},
      {"key Shift-Tab", 9, toolkit::kModShift},
      {"key Space", 32, 0},
      {"key Backspace", 8, 0},
      {"key Up", 30, 0},
      {"key Down", 31, 0},
      {"key Left", 28, 0},
      {"key Right", 29, 0},
      {"key Home", 1, 0},
      {"key End", 4, 0},
      {"key PageUp", 11, 0},
      {"key PageDown", 12, 0},
      {"key Delete", 127, 0},
      {"key shift-End", 4, toolkit::kModShift},
      {"key option-cmd-Left", 28, toolkit::kModOption | toolkit::kModCommand},
      {"key b", u'b', 0},
      {"key B", u'B', 0},
      {"key é", u'é', 0},
      {"key cmd-V", u'v', toolkit::kModCommand},
      {"key cmd-a", u'a', toolkit::kModCommand},
  };
  for (const Case& c : cases) {
    Answer a = parseAnswer(c.answer);
    EXPECT_EQ(a.kind, Answer::Kind::Key) << c.answer;
    EXPECT_EQ(a.character, c.character) << c.answer;
    EXPECT_EQ(a.modifiers, c.modifiers) << c.answer;
  }
}

TEST(Answers, BadAnswersAreRefusedByName) {
  for (const char* bad : {"clack 1", "click", "click x", "click 0", "click 1 2", "key", "key Hyper",
                          "key cmd-", "type hello", "type \"unclosed", "choose 6", "row 0",
                          "resize 10", "wait -1", "\"click\" 1", "drag 5", "click 5 sideways"}) {
    try {
      parseAnswer(bad);
      ADD_FAILURE() << "accepted: " << bad;
    } catch (const std::invalid_argument& e) {
      EXPECT_NE(std::string(e.what()).find(bad), std::string::npos) << e.what();
    }
  }
}

TEST(Answers, SessionRefusesABadAnswerAndKeepsGoingWithoutIt) {
  toolkit::SessionOptions options;
  options.backend = toolkit::Backend::Headless;
  options.answers = {"click 1", "# a comment", "", "press 2"};
  try {
    toolkit::configureSession(options);
    ADD_FAILURE() << "a bad answer was accepted";
  } catch (const std::invalid_argument& e) {
    EXPECT_NE(std::string(e.what()).find("press 2"), std::string::npos);
  }
  options.answers = {"click 1", "# a comment", ""};
  EXPECT_NO_THROW(toolkit::configureSession(options));
  toolkit::endSession();
}
