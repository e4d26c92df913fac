// The calculation language on its own, grouped by construct. (Scripts and the plug-in are tested
// end to end through mosa-host under tests/scripts.)
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

TEST(Literals, TextsEscapesAndReturns) {
  EXPECT_EQ(eval(R"("a\"b\\c")"), "a\"b\\c");
  EXPECT_EQ(eval(R"("one¶two")"), "one\rtwo");
  EXPECT_EQ(eval(R"("a" & ¶ & "b")"), "a\rb");
  EXPECT_EQ(eval(R"("pilcrow \¶")"), "pilcrow ¶");
  EXPECT_EQ(eval(R"("Grüße ≠ 😀")"), "Grüße ≠ 😀");
  EXPECT_EQ(eval("\"line\nbreak\""), "line\rbreak");
}

TEST(Literals, NumbersPrintAsTheHostWritesThem) {
  EXPECT_EQ(eval("42"), "42");
  EXPECT_EQ(eval("3.250"), "3.25");
  EXPECT_EQ(eval(".5"), ".5");
  EXPECT_EQ(eval("-0.5"), "-.5");
  EXPECT_EQ(eval("1/3"), ".3333333333333333");
  EXPECT_EQ(eval("2/3"), ".6666666666666667");
  EXPECT_EQ(eval("10^20"), "100000000000000000000");
  EXPECT_EQ(eval("0.1 + 0.2"), ".3");  // exact decimals, no binary rounding
}

TEST(Operators, PrecedenceAndAssociativity) {
  EXPECT_EQ(eval("1 + 2 * 3"), "7");
  EXPECT_EQ(eval("(1 + 2) * 3"), "9");
  EXPECT_EQ(eval("2 ^ 3 ^ 2"), "512");
  EXPECT_EQ(eval("-2 ^ 2"), "-4");
  EXPECT_EQ(eval("10 - 4 - 3"), "3");
  EXPECT_EQ(eval("1 + 2 & 3"), "33");
  EXPECT_EQ(eval("1 < 2 and 2 < 1 or 1"), "1");
  EXPECT_EQ(eval("not 1 = 2"), "1");
  EXPECT_EQ(eval("1 xor 1"), "0");
  EXPECT_EQ(eval("7 / 0"), "?");
}

TEST(Operators, ComparisonsOfTextsAndNumbers) {
  EXPECT_EQ(eval(R"("abc" = "ABC")"), "1");  // texts compare ignoring case
  EXPECT_EQ(eval(R"("Straße" = "STRASSE")"), "1");
  EXPECT_EQ(eval(R"("10" = 10)"), "1");
  EXPECT_EQ(eval(R"("9" < 10)"), "1");    // a number text against a number compares numbers
  EXPECT_EQ(eval(R"("9" < "10")"), "0");  // two texts compare as texts
  EXPECT_EQ(eval("3 ≠ 4"), "1");
  EXPECT_EQ(eval("3 <> 3"), "0");
  EXPECT_EQ(eval("3 ≤ 3 and 4 ≥ 5 = 0"), "1");
  EXPECT_EQ(eval(R"("5 apples" + 1)"), "6");
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

TEST(Builtins, TextFunctions) {
  EXPECT_EQ(eval(R"(Length ( "abc" ))"), "3");
  EXPECT_EQ(eval(R"(length("Grüße"))"), "5");
  EXPECT_EQ(eval(R"(Left ( "abcdef" ; 2 ) & Middle ( "abcdef" ; 3 ; 2 ) & Right ( "abcdef" ; 1 ))"),
            "abcdf");
  EXPECT_EQ(eval(R"(Position ( "banana" ; "AN" ; 1 ; 2 ))"), "4");
  EXPECT_EQ(eval(R"(Position ( "banana" ; "an" ; 6 ; -1 ))"), "4");
  EXPECT_EQ(eval(R"(Position ( "banana" ; "x" ; 1 ; 1 ))"), "0");
  EXPECT_EQ(eval(R"(Substitute ( "a-b-c" ; "-" ; "+" ))"), "a+b+c");
  EXPECT_EQ(eval(R"(Substitute ( "abc" ; [ "a" ; "b" ] ; [ "b" ; "c" ] ))"), "ccc");
  EXPECT_EQ(eval("Char ( 65 ) & Char ( 13 ) & Code ( \"a\" )"), "A\r97");
  EXPECT_EQ(eval(R"(Upper ( "straße" ) & Trim ( "  x  " ))"), "STRASSEx");
}

TEST(Builtins, ValueLists) {
  EXPECT_EQ(eval(R"(ValueCount ( "a¶b¶c¶" ))"), "3");
  EXPECT_EQ(eval(R"(ValueCount ( "" ))"), "0");
  EXPECT_EQ(eval(R"(GetValue ( "a¶b¶c" ; 2 ))"), "b");
  EXPECT_EQ(eval(R"(GetValue ( "a¶b" ; 3 ))"), "");
  EXPECT_EQ(eval(R"(List ( "a" ; "" ; 1 + 1 ))"), "a\r2");
}

TEST(Builtins, ConditionalsEvaluateOnlyWhatTheyNeed) {
  EXPECT_EQ(eval(R"(If ( 1 ; "yes" ; Unknown_Thing ))"), "yes");  // checked, though: see Errors
  EXPECT_EQ(eval(R"(If ( "" ; "yes" ; "no" ))"), "no");
  EXPECT_EQ(eval(R"(If ( 0 ; "yes" ))"), "");
  EXPECT_EQ(eval(R"(Case ( 0 ; "a" ; 2 > 1 ; "b" ; "c" ))"), "b");
  EXPECT_EQ(eval(R"(Case ( 0 ; "a" ; "default" ))"), "default");
}

TEST(Builtins, NumbersFromTexts) {
  EXPECT_EQ(eval(R"(GetAsNumber ( "FY98" ))"), "98");
  EXPECT_EQ(eval(R"(GetAsNumber ( "-$1,234.50" ))"), "-1234.5");
  EXPECT_EQ(eval(R"(GetAsNumber ( "none" ) & "|")"), "|");
  EXPECT_EQ(eval("GetAsText ( 1/4 ) & Round ( 2.345 ; 2 ) & \" \" & Int ( -7.9 ) & Mod ( -7 ; 3 )"),
            ".252.35 -72");
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
  EXPECT_EQ(eval(R"(Base64Decode ( "aGVsbG8=" ))"), "hello");
  EXPECT_EQ(eval(R"(Base64Encode ( "hello" ))"), "aGVsbG8=");
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
