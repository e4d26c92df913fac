// Values of the host's calculation language: text (UTF-16), numbers (exact rationals, printed
// as decimals) and container data (a list of typed streams).
#pragma once

#include <gmpxx.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

using Number = mpq_class;

// One stream of container data: a four-character type ("JPEG", "FNAM", "SIZE", ...) and its bytes.
struct Stream {
  std::string type;
  std::string bytes;
};

class Value {
 public:
  enum class Kind { Text, Numeric, Container };

  Value() = default;
  static Value text(std::u16string t);
  static Value fromUtf8(std::string_view t);
  static Value number(Number n);
  static Value number(long n) { return number(Number(n)); }
  static Value container(std::vector<Stream> streams);

  Kind kind() const { return kind_; }
  bool isText() const { return kind_ == Kind::Text; }
  bool isNumber() const { return kind_ == Kind::Numeric; }
  bool isContainer() const { return kind_ == Kind::Container; }

  // The text a person sees: numbers in decimal, containers by their file name.
  std::u16string toText() const;
  std::string toUtf8() const;
  // The number a person sees in the value; nullopt when text holds no digit.
  std::optional<Number> toNumberOpt() const;
  // As toNumberOpt, with 0 for text without digits (what arithmetic uses).
  Number toNumber() const;
  // A number value's number, without a copy; only for isNumber().
  const Number& asNumber() const { return *number_; }
  // Non-zero numbers are true; texts count by the number they hold.
  bool toBool() const;
  bool isEmpty() const;
  const std::vector<Stream>& streams() const { return streams_; }

 private:
  Kind kind_ = Kind::Text;
  std::u16string text_;
  std::optional<Number> number_;  // numbers only: a big number costs allocations to make
  std::vector<Stream> streams_;
};

// Decimal form of a number as the host application writes it: no exponent, at most 16 decimals
// (rounded half away from zero), no trailing zeros, and no "0" before the point ("-.5").
std::u16string formatNumber(const Number& n);
// The host's reading of digits in a text: every digit counts, in order, the first "." is the
// decimal point, and a "-" before the first digit makes it negative ("FY98" is 98, "$1,234.50" is
// 1234.5). nullopt when the text holds no digit.
std::optional<Number> parseNumberText(std::u16string_view text);
// A numeric literal of the language ("12", "3.25", ".5").
Number parseNumberLiteral(std::string_view digits);

std::u16string utf8ToUtf16(std::string_view s);
std::string utf16ToUtf8(std::u16string_view s);
// Case-insensitive comparison with full Unicode case folding: <0, 0, >0.
int compareIgnoringCase(std::u16string_view a, std::u16string_view b);
std::u16string foldCase(std::u16string_view s);

}  // namespace host
