// Numbers, values, argument vectors and containers through the fmx:: wrappers.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "fmwrapper/host_api.h"
#include "fmx/FMWrapper.h"

namespace {

using fmwrapper::utf16ToUtf8;

fmx::TextUniquePtr utf8(const std::string& s) {
  fmx::TextUniquePtr t;
  t->Assign(s.c_str(), fmx::Text::kEncoding_UTF8);
  return t;
}

std::string str(const fmx::Text& t) {
  std::u16string out(t.GetSize(), u'\0');
  t.GetUnicode(reinterpret_cast<fmx::uint16*>(out.data()), 0, t.GetSize());
  return utf16ToUtf8(out);
}

// The number the host reads from a text, and the text it writes back for it.
struct Read {
  std::string text;
  fmx::int32 asLong;
  std::string shown;
};

TEST(Number, TextReadsAsTheNumberAPersonSees) {
  const Read cases[] = {
      {"42", 42, "42"},
      {"  -17 ", -17, "-17"},
      {"abc12.5x3", 12, "12.53"},
      {"1.2.3", 1, "1.23"},
      {"-1-2", -12, "-12"},
      {"x-7.9", -7, "-7.9"},
      {"5-", 5, "5"},
      {"plain text", 0, "0"},
      {"", 0, "0"},
      {".5", 0, "0.5"},
      {"-0.75", 0, "-0.75"},
      {"99999999999", INT_MAX, "99999999999"},
      {"-99999999999", INT_MIN, "-99999999999"},
      {"12345678901234567.25", INT_MAX, "12345678901234567.25"},
  };
  fmx::LocaleUniquePtr locale;
  fmx::DataUniquePtr d;
  fmx::FixPtUniquePtr scratch(0, 16);
  for (const Read& c : cases) {
    SCOPED_TRACE(c.text);
    d->SetAsText(*utf8(c.text), *locale);
    // As the plug-in reads a whole number: through a scratch number of precision 16.
    scratch->AssignFixPt(d->GetAsNumber());
    EXPECT_EQ(scratch->AsLong(), c.asLong);
    d->SetAsNumber(d->GetAsNumber());
    EXPECT_EQ(str(d->GetAsText()), c.shown);
    EXPECT_EQ(d->GetNativeType(), fmx::Data::kDTNumber);
  }
}

TEST(Number, ArithmeticIsExactAndDivisionRoundsToPrecision) {
  fmx::FixPtUniquePtr a(1), b(3), r;
  EXPECT_EQ(a->Divide(*b, *r), 0);
  fmx::DataUniquePtr d;
  d->SetAsNumber(*r);
  EXPECT_EQ(str(d->GetAsText()), "0.3333333333333333");
  b->AssignInt(-3);
  a->AssignInt(2);
  a->Divide(*b, *r);
  d->SetAsNumber(*r);
  EXPECT_EQ(str(d->GetAsText()), "-0.6666666666666667");  // halves and more round away from 0
  EXPECT_EQ(r->AsLong(), 0);
  EXPECT_EQ(a->Divide(*fmx::FixPtUniquePtr(0), *r), -50);

  // 0.1 + 0.2 is exactly 0.3.
  a->AssignDouble(0.1);
  b->AssignDouble(0.2);
  a->Add(*b, *r);
  fmx::FixPtUniquePtr expected;
  expected->AssignDouble(0.3);
  EXPECT_TRUE(*r == *expected);
  EXPECT_DOUBLE_EQ(r->AsFloat(), 0.3);

  a->AssignInt64(4000000000LL);
  EXPECT_EQ(a->AsLong(), INT_MAX);
  EXPECT_EQ(a->AsLong64(), 4000000000LL);
  a->Negate();
  EXPECT_EQ(a->AsLong(), INT_MIN);
  a->AssignDouble(-2.9);
  EXPECT_EQ(a->AsLong(), -2);  // toward zero
  a->Increment(5);
  a->Decrement(1);
  EXPECT_EQ(a->AsLong(), 1);  // 1.1
  a->Multiply(*fmx::FixPtUniquePtr(10), *r);
  EXPECT_EQ(r->AsLong(), 11);
  EXPECT_TRUE(*a < *r);
  EXPECT_FALSE(a->IsZero());
  a->Subtract(*a, *r);
  EXPECT_TRUE(r->IsZero());
  EXPECT_TRUE(r->IsNearZero());
  EXPECT_FALSE(r->AsBool());
  fmx::FixPtUniquePtr p2(7, 2);
  EXPECT_EQ(p2->GetPrecision(), 2);
  EXPECT_EQ(fmx::FixPtUniquePtr(1, *p2)->GetPrecision(), 2);
}

TEST(Data, ValuesKeepTheirTypeLocaleAndForms) {
  fmx::DataUniquePtr d;
  EXPECT_FALSE(d->IsValid());
  EXPECT_TRUE(d->IsEmpty());
  EXPECT_EQ(d->GetNativeType(), fmx::Data::kDTInvalid);

  fmx::LocaleUniquePtr raw(fmx::Locale::kType_UnicodeRaw);
  EXPECT_EQ(d->SetAsText(*utf8("7 apples"), *raw), 0);
  EXPECT_EQ(d->GetNativeType(), fmx::Data::kDTText);
  EXPECT_EQ(str(d->GetAsText()), "7 apples");
  EXPECT_EQ(d->GetAsNumber().AsLong(), 7);
  EXPECT_TRUE(d->GetAsBoolean());
  fmx::LocaleUniquePtr copy(d->GetLocale());
  EXPECT_FALSE(d->IsEmpty());

  d->ConvertData(fmx::Data::kDTNumber);
  EXPECT_EQ(str(d->GetAsText()), "7");
  fmx::DataUniquePtr e;
  *e = *d;
  EXPECT_TRUE(*e == *d);
  e->SetAsText(*utf8("7"), *raw, fmx::Data::kDTNumber);
  EXPECT_TRUE(*e == *d);
  e->SetAsText(*utf8("7"), *raw);
  EXPECT_FALSE(*e == *d);  // text "7" is not the number 7

  d->Clear(fmx::Data::kDTText);
  EXPECT_TRUE(d->IsEmpty());
  EXPECT_TRUE(d->IsValid());
  EXPECT_FALSE(d->GetAsBoolean());
  EXPECT_EQ(d->SetAsText(*utf8("x"), *raw, fmx::Data::kDTBinary), -50);
}

TEST(Data, ContainerStreams) {
  fmx::BinaryDataUniquePtr bin;
  fmx::QuadCharUniquePtr jpeg('J', 'P', 'E', 'G'), size('S', 'I', 'Z', 'E'),
      gif('G', 'I', 'F', 'f');
  unsigned char pixels[] = {0xFF, 0xD8, 0xFF, 0xE0, 0x00};
  unsigned char dims[] = {0, 32, 0, 48};
  EXPECT_EQ(bin->Add(*jpeg, sizeof pixels, pixels), 0);
  EXPECT_EQ(bin->Add(*size, sizeof dims, dims), 0);
  EXPECT_EQ(bin->Add(*jpeg, 1, pixels), -50);  // one stream per type
  EXPECT_EQ(bin->GetCount(), 2);
  EXPECT_EQ(bin->GetIndex(*size), 1);
  EXPECT_EQ(bin->GetIndex(*gif), -1);
  EXPECT_EQ(bin->GetSize(0), 5u);
  EXPECT_EQ(bin->GetSize(7), 0u);
  EXPECT_EQ(bin->GetTotalSize(), 9u);
  fmx::QuadCharUniquePtr type;
  bin->GetType(1, *type);
  EXPECT_TRUE(*type == *size);
  EXPECT_EQ(type->GetMacType(), 0x53495A45u);
  EXPECT_EQ((*type)[3], 'E');

  unsigned char out[4] = {};
  EXPECT_EQ(bin->GetData(1, 0, 4, out), 0);
  EXPECT_EQ(out[3], 48);
  EXPECT_EQ(bin->GetData(0, 3, 2, out), 0);
  EXPECT_EQ(out[0], 0xE0);
  EXPECT_EQ(bin->GetData(0, 3, 3, out), -50);  // past the end: nothing copied
  EXPECT_EQ(bin->GetData(2, 0, 1, out), -50);

  // Through a value and an argument vector, as a script hands a container to a function.
  fmx::DataUniquePtr d;
  d->SetBinaryData(*bin);
  EXPECT_EQ(d->GetNativeType(), fmx::Data::kDTBinary);
  EXPECT_FALSE(d->IsEmpty());
  fmx::DataVectUniquePtr args;
  args->PushBack(*d);
  EXPECT_EQ(args->AtAsBinaryData(0).GetIndex(*jpeg), 0);
  EXPECT_TRUE(args->At(0).GetBinaryData() == *bin);
  EXPECT_EQ(str(args->AtAsText(0)), "");

  EXPECT_TRUE(bin->Remove(*jpeg));
  EXPECT_FALSE(bin->Remove(*jpeg));
  EXPECT_EQ(bin->GetIndex(*size), 0);
  EXPECT_FALSE(args->At(0).GetBinaryData() == *bin);  // the vector kept its own copy
  bin->RemoveAll();
  EXPECT_EQ(bin->GetCount(), 0);
}

}  // namespace
