// fmx::Data: a calculation value of one native type (text, number, date, time, timestamp,
// binary, boolean) with its locale. The text form and the number form are kept current together.
#include "impl.h"
#include "number.h"

using namespace fmwrapper::detail;
using fmx::_fmxcpt;
using fmx::int32;

namespace fmwrapper::detail {

const DataObj& emptyData() {
  static const DataObj empty;
  return empty;
}

const FixPtObj& numberOf(const DataObj& d) {
  if (d.numberStale) {
    parseNumber(d.text.s, d.number.get().v);
    d.numberStale = false;
  }
  return d.number.get();
}

}  // namespace fmwrapper::detail

namespace {

DataObj& self(void* p) {
  return *static_cast<DataObj*>(p);
}
const DataObj& self(const void* p) {
  return *static_cast<const DataObj*>(p);
}

bool isNumeric(int32 type) {
  return type == fmx::Data::kDTNumber || type == fmx::Data::kDTBoolean;
}
bool validType(int32 type) {
  return type >= fmx::Data::kDTInvalid && type <= fmx::Data::kDTBoolean;
}

void setText(DataObj& d, const std::u16string& s, int32 type) {
  d.text.s = s;
  d.numberStale = true;
  d.binary.streams.clear();
  d.type = type;
  // A number given as text reads as the number it holds.
  if (isNumeric(type)) d.text.s = formatNumber(numberOf(d).v, d.number.precision());
}

void setNumber(DataObj& d, const FixPtObj& n, int32 type) {
  d.number.get() = n;
  d.numberStale = false;
  d.text.s = formatNumber(n.v, n.precision);
  d.binary.streams.clear();
  d.type = type;
}

}  // namespace

extern "C" {

fmx::Data* FM_Data_Constructor1(_fmxcpt& _x) noexcept {
  return construct<fmx::Data, DataObj>(_x, [] { return std::make_unique<DataObj>(); });
}

// Empty: an invalid value, a container without streams, or any other value whose text is empty.
bool FM_Data_IsEmpty(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, true, [&] {
    const DataObj& d = self(p);
    if (d.type == fmx::Data::kDTInvalid) return true;
    if (d.type == fmx::Data::kDTBinary) return d.binary.streams.empty();
    return d.text.s.empty();
  });
}

bool FM_Data_IsValid(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return self(p).type != fmx::Data::kDTInvalid; });
}

const fmx::Text& FM_Data_GetAsText(const void* p, _fmxcpt& _x) noexcept {
  return *guard(_x, reinterpret_cast<const fmx::Text*>(&emptyData().text),
                [&] { return reinterpret_cast<const fmx::Text*>(&self(p).text); });
}

const fmx::FixPt& FM_Data_GetAsNumber(const void* p, _fmxcpt& _x) noexcept {
  return *guard(_x, reinterpret_cast<const fmx::FixPt*>(&numberOf(emptyData())),
                [&] { return reinterpret_cast<const fmx::FixPt*>(&numberOf(self(p))); });
}

bool FM_Data_GetAsBoolean(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] { return mpq_sgn(numberOf(self(p)).v) != 0; });
}

const fmx::BinaryData& FM_Data_GetBinaryData(const void* p, _fmxcpt& _x) noexcept {
  return *guard(_x, reinterpret_cast<const fmx::BinaryData*>(&emptyData().binary),
                [&] { return reinterpret_cast<const fmx::BinaryData*>(&self(p).binary); });
}

const fmx::Locale& FM_Data_GetLocale(const void* p, _fmxcpt& _x) noexcept {
  return *guard(_x, reinterpret_cast<const fmx::Locale*>(&emptyData().locale),
                [&] { return reinterpret_cast<const fmx::Locale*>(&self(p).locale); });
}

int32 FM_Data_GetNativeType(const void* p, _fmxcpt& _x) noexcept {
  return guard(_x, int32{fmx::Data::kDTInvalid}, [&] { return self(p).type; });
}

// Changes the native type. Text becoming a number is read as a number; a container becoming
// anything else loses its streams; anything becoming invalid is cleared.
void FM_Data_ConvertData(void* p, int32 nativeType, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    if (!validType(nativeType)) throw BadRequest{};
    DataObj& d = self(p);
    if (nativeType == fmx::Data::kDTInvalid) {
      d = DataObj{};
      return;
    }
    if (nativeType == fmx::Data::kDTBinary) {
      d.type = nativeType;
      return;
    }
    if (isNumeric(nativeType)) d.text.s = formatNumber(numberOf(d).v, d.number.precision());
    d.binary.streams.clear();
    d.type = nativeType;
  });
}

fmx::errcode FM_Data_SetAsText(void* p, const fmx::Text& textData, const fmx::Locale& sourceLocale,
                               int32 nativeType, _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    if (!validType(nativeType) || nativeType == fmx::Data::kDTInvalid ||
        nativeType == fmx::Data::kDTBinary) {
      return kParamErr;
    }
    DataObj& d = self(p);
    setText(d, text(textData).s, nativeType);
    d.locale = locale(sourceLocale);
    return kNoError;
  });
}

fmx::errcode FM_Data_SetAsNumber(void* p, const fmx::FixPt& numericData, int32 nativeType,
                                 _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    if (!validType(nativeType) || nativeType == fmx::Data::kDTInvalid ||
        nativeType == fmx::Data::kDTBinary) {
      return kParamErr;
    }
    setNumber(self(p), fixpt(numericData), nativeType);
    return kNoError;
  });
}

// Stores container data; the native type becomes binary when forced or when the value had none.
fmx::errcode FM_Data_SetBinaryData(void* p, const fmx::BinaryData& binaryData,
                                   bool forceBinaryNativeType, _fmxcpt& _x) noexcept {
  return guard(_x, kParamErr, [&] {
    DataObj& d = self(p);
    BinaryObj copy = binary(binaryData);
    d.binary = std::move(copy);
    d.text.s.clear();
    d.number.setZero();
    d.numberStale = false;
    if (forceBinaryNativeType || d.type == fmx::Data::kDTInvalid) d.type = fmx::Data::kDTBinary;
    return kNoError;
  });
}

void FM_Data_Clear(void* p, int32 newNativeType, _fmxcpt& _x) noexcept {
  guardVoid(_x, [&] {
    if (!validType(newNativeType)) throw BadRequest{};
    DataObj& d = self(p);
    const LocaleObj keep = d.locale;
    d = DataObj{};
    d.locale = keep;
    d.type = newNativeType;
  });
}

fmx::Data* FM_Data_operatorAS(void* p, const fmx::Data& source, _fmxcpt& _x) noexcept {
  return guard(_x, static_cast<fmx::Data*>(p), [&] {
    if (p != &source) self(p) = data(source);
    return static_cast<fmx::Data*>(p);
  });
}

// Equal: same native type and same value (numbers compared as numbers).
bool FM_Data_operatorEQ(const void* p, const fmx::Data& compareWith, _fmxcpt& _x) noexcept {
  return guard(_x, false, [&] {
    const DataObj& a = self(p);
    const DataObj& b = data(compareWith);
    if (a.type != b.type) return false;
    if (isNumeric(a.type)) return mpq_equal(numberOf(a).v, numberOf(b).v) != 0;
    if (a.type == fmx::Data::kDTBinary) {
      if (a.binary.streams.size() != b.binary.streams.size()) return false;
      for (std::size_t i = 0; i < a.binary.streams.size(); ++i) {
        if (a.binary.streams[i].type != b.binary.streams[i].type ||
            a.binary.streams[i].bytes != b.binary.streams[i].bytes) {
          return false;
        }
      }
      return true;
    }
    return a.text.s == b.text.s;
  });
}

void FM_Data_Delete(void* p, _fmxcpt& _x) noexcept {
  destroy<DataObj>(p, _x);
}

}  // extern "C"
