// The calculation language where a script cannot reach: variables set from outside, container
// values, error positions and nesting limits. What calculations answer is walked through mosa-host
// by tests/scripts/calculations.fmscript.
#include <gtest/gtest.h>

#include "host/calc.h"
#include "host/container.h"

namespace host {
namespace {

std::string eval(Evaluator& ev, const std::string& text) {
  Source src(text);
  ExprPtr e = parseCalculation(src);
  ev.check(*e);
  return ev.evaluate(*e).toUtf8();
}

std::string eval(const std::string& text) {
  Evaluator ev;
  return eval(ev, text);
}

// "line:column: message" of the error a calculation raises.
std::string error(const std::string& text) {
  try {
    eval(text);
  } catch (const CalcError& e) {
    return std::to_string(e.loc().line) + ":" + std::to_string(e.loc().column) + ": " + e.what();
  }
  return "no error";
}

TEST(Literals, ALineBreakInATextIsAReturn) {
  EXPECT_EQ(eval("\"line\nbreak\""), "line\rbreak");
}

TEST(Variables, ScriptLocalsGlobalsAndLet) {
  Evaluator ev;
  ev.setVariable(u"$x", Value::number(2L));
  ev.setVariable(u"$$g", Value::fromUtf8("global"));
  EXPECT_EQ(eval(ev, "$X * 10"), "20");  // names ignore case
  EXPECT_EQ(eval(ev, "$unset & \"|\""), "|");
  EXPECT_EQ(eval(ev, "Let ( [ a = 2 ; b = a * 3 ] ; a + b )"), "8");
  EXPECT_EQ(eval(ev, "Let ( a = 1 ; Let ( a = a + 1 ; a ) & a )"), "21");
  EXPECT_EQ(eval(ev, "Let ( $made = \"kept\" ; 0 )"), "0");
  EXPECT_EQ(eval(ev, "$made"), "kept");  // a $variable set in Let outlives it
  ev.clearLocals();
  EXPECT_EQ(eval(ev, "$made & $$g"), "global");
}

TEST(Builtins, ContainersFromBase64) {
  // A 1x1 GIF: the stream type follows the name, the size comes from the picture.
  Evaluator ev;
  Source src(
      R"(Base64Decode ( "R0lGODlhAQABAIAAAP///wAAACH5BAEAAAAALAAAAAABAAEAAAICRAEAOw==" ; "dot.GIF" ))");
  ExprPtr e = parseCalculation(src);
  Value v = ev.evaluate(*e);
  ASSERT_TRUE(v.isContainer());
  ASSERT_EQ(v.streams().size(), 3u);
  EXPECT_EQ(v.streams()[0].type, "GIFf");
  EXPECT_EQ(v.streams()[1].type, "FNAM");
  EXPECT_EQ(v.streams()[2].bytes, std::string("\0\1\0\1", 4));
  EXPECT_EQ(v.toUtf8(), "dot.GIF");
  EXPECT_EQ(streamTypeForName("a.jpeg"), "JPEG");
  EXPECT_EQ(streamTypeForName("a.PNG"), "PNGf");
  EXPECT_EQ(streamTypeForName("a.pict"), "PICT");
  EXPECT_EQ(streamTypeForName("a.txt"), "FILE");
  EXPECT_FALSE(pictureSize("JPEG", "\xFF\xD8\xFF").has_value());  // truncated: no size, no crash
}

TEST(Errors, SyntaxErrorsNameLineAndColumn) {
  EXPECT_EQ(error("1 +"), "1:4: expected a value but the text ended");
  EXPECT_EQ(error("Length ( \"abc\" "), "1:16: expected \";\" or \")\" but the text ended");
  EXPECT_EQ(error("\"open"), "1:1: text is not closed: a \" is missing");
  EXPECT_EQ(error("1 +\n  @"), "2:3: unexpected character \"@\"");
  EXPECT_EQ(error("1 2"), "1:3: unexpected text after the calculation");
}

TEST(Errors, UnknownFunctionsAndArgumentCounts) {
  EXPECT_EQ(error("If ( 1 ; 2 ; Nope ( 3 ) )"), "1:14: unknown function \"Nope\"");
  EXPECT_EQ(error("Left ( \"a\" )"), "1:1: Left takes 2 arguments, not 1");
  EXPECT_EQ(error("Length ( 1 ; 2 )"), "1:1: Length takes 1 argument, not 2");
  EXPECT_EQ(error("undefinedName + 1"),
            "1:1: unknown name \"undefinedName\" (variables start with $, texts are quoted)");
  EXPECT_EQ(describeCounts({{0, 0}, {1, 1}}), "takes 0 or 1 arguments");
  EXPECT_EQ(describeCounts({{2, 6}}), "takes 2 to 6 arguments");
}

}  // namespace
}  // namespace host

namespace host {
namespace {

TEST(Errors, DeepNestingIsRefusedNotACrash) {
  const std::string deep = std::string(5000, '(') + "1" + std::string(5000, ')');
  EXPECT_NE(error(deep).find("nested too deeply"), std::string::npos);
  EXPECT_NE(error(std::string(5000, '-') + "1").find("nested too deeply"), std::string::npos);
  std::string chain = "1";
  for (int i = 0; i < 5000; ++i) chain += "+1";
  EXPECT_NE(error(chain).find("nested too deeply"), std::string::npos);
  std::string fine = "0";
  for (int i = 0; i < 500; ++i) fine += "+1";
  EXPECT_EQ(eval(fine), "500");
}

}  // namespace
}  // namespace host
