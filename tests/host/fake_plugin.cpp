// A small plug-in for testing the host on its own: it registers a few functions with known
// argument counts and records what the host did to it (idle levels, the instance id).
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fmx/FMWrapper.h"

namespace {

std::string gIdleLog;  // one digit per idle call: the level
std::string gFolder;   // what the instance id pointed at during init
int gShutdowns = 0;

void setText(fmx::Data& result, const std::string& utf8) {
  fmx::TextUniquePtr t;
  t->Assign(utf8.c_str(), fmx::Text::kEncoding_UTF8);
  fmx::LocaleUniquePtr locale;
  result.SetAsText(*t, *locale);
}

std::string argText(const fmx::DataVect& args, fmx::uint32 i) {
  const fmx::Text& t = args.AtAsText(i);
  const fmx::uint32 size = t.GetSize();
  std::string out(size * 3 + 1, '\0');
  t.GetBytes(out.data(), static_cast<fmx::uint32>(out.size()), 0, fmx::kSize_End,
             fmx::Text::kEncoding_UTF8);
  out.resize(std::strlen(out.c_str()));
  return out;
}

fmx::errcode Dispatch(fmx::int16 id, const fmx::ExprEnv&, const fmx::DataVect& args,
                      fmx::Data& result) {
  try {
    switch (id) {
      case 0:
        setText(result, "Fake Plug-In 1.0");
        break;
      case 1:
        setText(result, "switches:" + argText(args, 0));
        break;
      case 10: {  // Fake_Echo: the texts joined with "|"
        std::string out;
        // Appended piece by piece: GCC 12 at -O3 warns falsely (-Wrestrict) on "x" + string.
        for (fmx::uint32 i = 0; i < args.Size(); ++i) {
          if (i) out += '|';
          out += argText(args, i);
        }
        setText(result, out);
        break;
      }
      case 11: {  // Fake_Add: a number result
        fmx::FixPtUniquePtr sum;
        args.AtAsNumber(0).Add(args.AtAsNumber(1), *sum);
        result.SetAsNumber(*sum);
        break;
      }
      case 12:  // Fake_IdleLog: the levels of the idle calls so far, then forgets them
        setText(result, gIdleLog);
        gIdleLog.clear();
        break;
      case 13:  // Fake_Folder
        setText(result, gFolder);
        break;
      case 14: {  // Fake_Streams: the stream types of a container, and the SIZE bytes in hex
        const fmx::BinaryData& b = args.AtAsBinaryData(0);
        std::string out;
        for (fmx::int32 i = 0; i < b.GetCount(); ++i) {
          fmx::QuadCharUniquePtr q;
          b.GetType(i, *q);
          for (int k = 0; k < 4; ++k) out.push_back(static_cast<char>((*q)[k]));
          out += ':';
          out += std::to_string(b.GetSize(i));
          out += ' ';
        }
        fmx::QuadCharUniquePtr size('S', 'I', 'Z', 'E');
        const fmx::int32 at = b.GetIndex(*size);
        if (at >= 0 && b.GetSize(at) == 4) {
          unsigned char bytes[4];
          b.GetData(at, 0, 4, bytes);
          char hex[16];
          std::snprintf(hex, sizeof hex, "%02x%02x%02x%02x", bytes[0], bytes[1], bytes[2],
                        bytes[3]);
          out += hex;
        }
        setText(result, out);
        break;
      }
      case 15:  // Fake_Fail: an error code, which the host shows as "?"
        return 2;
      default:
        break;
    }
  } catch (...) {
    setText(result, "$$-108");
  }
  return 0;
}

struct Entry {
  fmx::int16 id;
  const char* name;
  const char* prototype;
  fmx::int16 min, max;
};

const Entry kEntries[] = {
    {0, "Fake_Version", "Fake_Version", 0, 0},
    {1, "Fake_Version", "Fake_Version ( switches )", 1, 1},
    {10, "Fake_Echo", "Fake_Echo ( text { ; text ; text } )", 1, 3},
    {11, "Fake_Add", "Fake_Add ( a ; b )", 2, 2},
    {12, "Fake_IdleLog", "Fake_IdleLog", 0, 0},
    {13, "Fake_Folder", "Fake_Folder", 0, 0},
    {14, "Fake_Streams", "Fake_Streams ( container )", 1, 1},
    {15, "Fake_Fail", "Fake_Fail ( x )", 1, 1},
};

fmx::int32 Init(fmx::int16 version, const char* folder) {
  if (version < 50 || version > 255) return -1;
  if (std::getenv("FAKE_PLUGIN_REFUSE")) return -2;
  gFolder = folder ? folder : "";
  fmx::QuadCharUniquePtr id('F', 'a', 'k', 'e');
  for (const Entry& e : kEntries) {
    fmx::TextUniquePtr name, prototype;
    name->Assign(e.name, fmx::Text::kEncoding_UTF8);
    prototype->Assign(e.prototype, fmx::Text::kEncoding_UTF8);
    fmx::ExprEnv::RegisterExternalFunction(*id, e.id, *name, *prototype, e.min, e.max, 0xFF01,
                                           Dispatch);
  }
  return 100;
}

void Shutdown() {
  ++gShutdowns;
  fmx::QuadCharUniquePtr id('F', 'a', 'k', 'e');
  for (const Entry& e : kEntries) fmx::ExprEnv::UnRegisterExternalFunction(*id, e.id);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void FMExternCallProc(FMX_ExternCallPtr pb) {
  try {
    switch (pb->whichCall) {
      case kFMXT_Init:
        pb->result = static_cast<fmx::ptrtype>(static_cast<fmx::int32>(
            Init(pb->extnVersion, reinterpret_cast<const char*>(pb->instanceID))));
        break;
      case kFMXT_Idle:
        gIdleLog += static_cast<char>('0' + pb->parm1);
        break;
      case kFMXT_Shutdown:
        Shutdown();
        break;
      case kFMXT_GetString: {
        static const char16_t name[] = u"Fake Plug-In";
        auto* buffer = reinterpret_cast<char16_t*>(pb->result);
        const fmx::ptrtype size = pb->parm3;
        if (pb->parm1 == 128 && buffer && size > sizeof name / 2) {
          std::memcpy(buffer, name, sizeof name);
        }
        break;
      }
      default:
        break;
    }
  } catch (...) {
  }
}
