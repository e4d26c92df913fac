// Lexer and recursive-descent parser for calculations.
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>

#include "host/calc.h"

namespace host {

Source::Source(std::string_view utf8) {
  icu::UnicodeString u = icu::UnicodeString::fromUTF8(
      icu::StringPiece(utf8.data(), static_cast<int32_t>(utf8.size())));
  text_.resize(static_cast<size_t>(u.countChar32()));
  UErrorCode status = U_ZERO_ERROR;
  u.toUTF32(reinterpret_cast<UChar32*>(text_.data()), static_cast<int32_t>(text_.size()), status);
  lineStarts_.push_back(0);
  for (size_t i = 0; i < text_.size(); ++i) {
    if (text_[i] == U'\n') lineStarts_.push_back(i + 1);
  }
}

Loc Source::locAt(size_t pos) const {
  auto it = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), pos);
  const size_t line = static_cast<size_t>(it - lineStarts_.begin());
  return Loc{static_cast<int>(line), static_cast<int>(pos - lineStarts_[line - 1] + 1)};
}

namespace {

std::u16string toU16(std::u32string_view s) {
  icu::UnicodeString u = icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(s.data()),
                                                       static_cast<int32_t>(s.size()));
  return std::u16string(reinterpret_cast<const char16_t*>(u.getBuffer()),
                        static_cast<size_t>(u.length()));
}

std::string toUtf8(std::u32string_view s) {
  return utf16ToUtf8(toU16(s));
}

bool isNameStart(char32_t c) {
  return c == U'_' || u_isalpha(static_cast<UChar32>(c));
}
bool isNameChar(char32_t c) {
  return c == U'_' || c == U'.' || u_isalnum(static_cast<UChar32>(c));
}

struct Token {
  enum class Type { End, Newline, Number, String, Name, Variable, Op };
  Type type = Type::End;
  std::u32string text;  // Op: the operator; Name/Variable: as written; String: the value
  size_t pos = 0;
};

class Parser {
 public:
  Parser(const Source& src, size_t pos, int depth)
      : src_(src), s_(src.text()), pos_(pos), depth_(depth) {
    advance();
  }

  ExprPtr expression() { return orExpr(); }
  const Token& peek() const { return tok_; }
  size_t tokenStart() const { return tok_.pos; }

 private:
  [[noreturn]] void fail(size_t pos, const std::string& msg) const {
    throw CalcError(src_.locAt(pos), msg);
  }

  void skipBlanks() {
    for (;;) {
      if (pos_ >= s_.size()) return;
      const char32_t c = s_[pos_];
      if (c == U'\n' && depth_ == 0) return;
      if (c == U' ' || c == U'\t' || c == U'\r' || c == U'\n' || c == 0xA0) {
        ++pos_;
      } else if (c == U'/' && pos_ + 1 < s_.size() && s_[pos_ + 1] == U'/') {
        while (pos_ < s_.size() && s_[pos_] != U'\n') ++pos_;
      } else if (c == U'/' && pos_ + 1 < s_.size() && s_[pos_ + 1] == U'*') {
        const size_t start = pos_;
        const size_t end = s_.find(U"*/", pos_ + 2);
        if (end == std::u32string::npos) fail(start, "comment is not closed");
        pos_ = end + 2;
      } else {
        return;
      }
    }
  }

  void advance() {
    skipBlanks();
    tok_ = Token{};
    tok_.pos = pos_;
    if (pos_ >= s_.size()) return;
    const char32_t c = s_[pos_];
    if (c == U'\n') {
      tok_.type = Token::Type::Newline;
      return;  // the caller decides whether to move past it
    }
    if (c == U'"') return lexString();
    if ((c >= U'0' && c <= U'9') ||
        (c == U'.' && pos_ + 1 < s_.size() && s_[pos_ + 1] >= U'0' && s_[pos_ + 1] <= U'9')) {
      size_t end = pos_;
      bool point = false;
      while (end < s_.size() &&
             ((s_[end] >= U'0' && s_[end] <= U'9') || (s_[end] == U'.' && !point))) {
        if (s_[end] == U'.') point = true;
        ++end;
      }
      tok_.type = Token::Type::Number;
      tok_.text = s_.substr(pos_, end - pos_);
      pos_ = end;
      return;
    }
    if (c == U'$') {
      size_t end = pos_ + 1;
      if (end < s_.size() && s_[end] == U'$') ++end;
      const size_t nameStart = end;
      while (end < s_.size() && isNameChar(s_[end])) ++end;
      if (end == nameStart) fail(pos_, "a variable name must follow \"$\"");
      tok_.type = Token::Type::Variable;
      tok_.text = s_.substr(pos_, end - pos_);
      pos_ = end;
      return;
    }
    if (isNameStart(c)) {
      size_t end = pos_;
      while (end < s_.size() && isNameChar(s_[end])) ++end;
      tok_.type = Token::Type::Name;
      tok_.text = s_.substr(pos_, end - pos_);
      pos_ = end;
      return;
    }
    static const std::u32string_view twoChar[] = {U"<>", U"<=", U">="};
    for (auto op : twoChar) {
      if (s_.compare(pos_, 2, op) == 0) {
        tok_.type = Token::Type::Op;
        tok_.text = op;
        pos_ += 2;
        return;
      }
    }
    static const std::u32string_view oneChar = U"+-*/^&=<>()[];,¶≠≤≥";
    if (oneChar.find(c) != std::u32string_view::npos) {
      tok_.type = Token::Type::Op;
      tok_.text = std::u32string(1, c);
      ++pos_;
      if (c == U'(' || c == U'[') ++depth_;
      if ((c == U')' || c == U']') && depth_ > 0) --depth_;
      return;
    }
    fail(pos_, "unexpected character \"" + toUtf8(std::u32string(1, c)) + "\"");
  }

  void lexString() {
    const size_t start = pos_;
    std::u32string out;
    ++pos_;
    for (;;) {
      if (pos_ >= s_.size()) fail(start, "text is not closed: a \" is missing");
      const char32_t c = s_[pos_++];
      if (c == U'"') break;
      if (c == U'\\' && pos_ < s_.size() &&
          (s_[pos_] == U'"' || s_[pos_] == U'\\' || s_[pos_] == U'¶')) {
        out.push_back(s_[pos_++]);
      } else if (c == U'¶' || c == U'\n') {
        out.push_back(U'\r');
      } else if (c == U'\r' && pos_ < s_.size() && s_[pos_] == U'\n') {
        // A CR LF line break in the file is one return in the text.
      } else {
        out.push_back(c);
      }
    }
    tok_.type = Token::Type::String;
    tok_.text = std::move(out);
  }

  bool isOp(std::u32string_view op) const {
    return tok_.type == Token::Type::Op && tok_.text == op;
  }
  bool isWord(std::u16string_view word) const {
    return tok_.type == Token::Type::Name && compareIgnoringCase(toU16(tok_.text), word) == 0;
  }

  ExprPtr node(Expr::Kind kind, size_t pos) {
    auto e = std::make_unique<Expr>();
    e->kind = kind;
    e->loc = src_.locAt(pos);
    return e;
  }
  ExprPtr binaryNode(std::string op, size_t pos, ExprPtr l, ExprPtr r) {
    auto e = node(Expr::Kind::Binary, pos);
    e->op = std::move(op);
    e->args.push_back(std::move(l));
    e->args.push_back(std::move(r));
    return e;
  }

  ExprPtr orExpr() {
    ExprPtr l = andExpr();
    while (isWord(u"or") || isWord(u"xor")) {
      const size_t p = tok_.pos;
      std::string op = isWord(u"or") ? "or" : "xor";
      advance();
      l = binaryNode(op, p, std::move(l), andExpr());
    }
    return l;
  }
  ExprPtr andExpr() {
    ExprPtr l = notExpr();
    while (isWord(u"and")) {
      const size_t p = tok_.pos;
      advance();
      l = binaryNode("and", p, std::move(l), notExpr());
    }
    return l;
  }
  ExprPtr notExpr() {
    if (isWord(u"not")) {
      auto e = node(Expr::Kind::Unary, tok_.pos);
      e->op = "not";
      advance();
      e->args.push_back(notExpr());
      return e;
    }
    return comparison();
  }
  ExprPtr comparison() {
    ExprPtr l = concat();
    for (;;) {
      std::string op;
      if (isOp(U"="))
        op = "=";
      else if (isOp(U"<>") || isOp(U"≠"))
        op = "<>";
      else if (isOp(U"<"))
        op = "<";
      else if (isOp(U">"))
        op = ">";
      else if (isOp(U"<=") || isOp(U"≤"))
        op = "<=";
      else if (isOp(U">=") || isOp(U"≥"))
        op = ">=";
      else
        return l;
      const size_t p = tok_.pos;
      advance();
      l = binaryNode(op, p, std::move(l), concat());
    }
  }
  ExprPtr concat() {
    ExprPtr l = additive();
    while (isOp(U"&")) {
      const size_t p = tok_.pos;
      advance();
      l = binaryNode("&", p, std::move(l), additive());
    }
    return l;
  }
  ExprPtr additive() {
    ExprPtr l = multiplicative();
    while (isOp(U"+") || isOp(U"-")) {
      const size_t p = tok_.pos;
      std::string op = isOp(U"+") ? "+" : "-";
      advance();
      l = binaryNode(op, p, std::move(l), multiplicative());
    }
    return l;
  }
  ExprPtr multiplicative() {
    ExprPtr l = unary();
    while (isOp(U"*") || isOp(U"/")) {
      const size_t p = tok_.pos;
      std::string op = isOp(U"*") ? "*" : "/";
      advance();
      l = binaryNode(op, p, std::move(l), unary());
    }
    return l;
  }
  ExprPtr unary() {
    if (isOp(U"-") || isOp(U"+")) {
      auto e = node(Expr::Kind::Unary, tok_.pos);
      std::string op = isOp(U"-") ? "-" : "+";
      e->op = std::move(op);
      advance();
      e->args.push_back(unary());
      return e;
    }
    return power();
  }
  ExprPtr power() {
    ExprPtr base = primary();
    if (isOp(U"^")) {
      const size_t p = tok_.pos;
      advance();
      return binaryNode("^", p, std::move(base), unary());
    }
    return base;
  }

  void expectOp(std::u32string_view op, const std::string& what) {
    if (!isOp(op)) fail(tok_.pos, "expected " + what + describeFound());
    advance();
  }

  std::string describeFound() const {
    switch (tok_.type) {
      case Token::Type::End:
        return " but the text ended";
      case Token::Type::Newline:
        return " but the line ended";
      case Token::Type::String:
        return " but found a text";
      default:
        return " but found \"" + toUtf8(tok_.text) + "\"";
    }
  }

  ExprPtr primary() {
    const size_t p = tok_.pos;
    switch (tok_.type) {
      case Token::Type::Number: {
        auto e = node(Expr::Kind::Literal, p);
        e->value = Value::number(parseNumberLiteral(toUtf8(tok_.text)));
        advance();
        return e;
      }
      case Token::Type::String: {
        auto e = node(Expr::Kind::Literal, p);
        e->value = Value::text(toU16(tok_.text));
        advance();
        return e;
      }
      case Token::Type::Variable: {
        auto e = node(Expr::Kind::Variable, p);
        e->name = toU16(tok_.text);
        advance();
        return e;
      }
      case Token::Type::Name: {
        if (isWord(u"and") || isWord(u"or") || isWord(u"xor")) {
          fail(p, "expected a value" + describeFound());
        }
        std::u16string name = toU16(tok_.text);
        advance();
        if (!isOp(U"(")) {
          auto e = node(Expr::Kind::Name, p);
          e->name = std::move(name);
          return e;
        }
        auto e = node(Expr::Kind::Call, p);
        e->name = std::move(name);
        advance();
        if (isOp(U")")) {
          advance();
          return e;
        }
        for (;;) {
          e->args.push_back(expression());
          if (isOp(U";") || isOp(U",")) {
            advance();
            continue;
          }
          expectOp(U")", "\";\" or \")\"");
          return e;
        }
      }
      case Token::Type::Op:
        if (isOp(U"¶")) {
          auto e = node(Expr::Kind::Literal, p);
          e->value = Value::text(u"\r");
          advance();
          return e;
        }
        if (isOp(U"(")) {
          advance();
          ExprPtr inner = expression();
          expectOp(U")", "\")\"");
          return inner;
        }
        if (isOp(U"[")) {
          auto e = node(Expr::Kind::List, p);
          advance();
          for (;;) {
            e->args.push_back(expression());
            if (isOp(U";") || isOp(U",")) {
              advance();
              continue;
            }
            expectOp(U"]", "\";\" or \"]\"");
            return e;
          }
        }
        [[fallthrough]];
      default:
        fail(p, "expected a value" + describeFound());
    }
  }

  const Source& src_;
  const std::u32string& s_;
  size_t pos_;
  int depth_ = 0;
  Token tok_;
};

}  // namespace

ExprPtr parseExpression(const Source& source, size_t& pos, bool insideBrackets) {
  Parser p(source, pos, insideBrackets ? 1 : 0);
  ExprPtr e = p.expression();
  pos = p.tokenStart();
  return e;
}

ExprPtr parseCalculation(const Source& source) {
  Parser p(source, 0, 1);
  ExprPtr e = p.expression();
  if (p.peek().type != Token::Type::End) {
    throw CalcError(source.locAt(p.tokenStart()), "unexpected text after the calculation");
  }
  return e;
}

}  // namespace host
