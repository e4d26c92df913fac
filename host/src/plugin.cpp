#include "host/plugin.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "toolkit/session.h"

namespace host {

namespace {

std::u16string folded(std::u16string_view s) {
  return foldCase(s);
}

// Every table any plug-in has had gets its own generation.
std::uint64_t gGenerations = 0;

}  // namespace

Plugin::Plugin(const std::string& path) : path_(path) {
  std::error_code ec;
  const std::filesystem::path p(path);
  if (!std::filesystem::exists(p, ec)) {
    throw PluginLoadError("the plug-in \"" + path + "\" does not exist");
  }
  if (std::filesystem::is_directory(p, ec)) {
    throw PluginLoadError("the plug-in \"" + path + "\" is a folder, not a module");
  }
  std::filesystem::path abs = std::filesystem::absolute(p, ec);
  folder_ = (ec ? p : abs).parent_path().lexically_normal().string();
  if (folder_.size() > 1 && folder_.back() == '/') folder_.pop_back();
  // A path without a slash would make dlopen search the library path instead of this file.
  const std::string openPath = (ec ? p : abs).string();
  handle_ = dlopen(openPath.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle_) {
    const char* why = dlerror();
    throw PluginLoadError("the plug-in \"" + path +
                          "\" cannot be loaded: " + (why ? why : "unknown reason"));
  }
  entry_ = reinterpret_cast<FMX_ExternCallProc>(dlsym(handle_, "FMExternCallProc"));
  if (!entry_) {
    dlclose(handle_);
    handle_ = nullptr;
    throw PluginLoadError("the plug-in \"" + path + "\" has no entry point FMExternCallProc");
  }
}

Plugin::~Plugin() {
  if (enabled_) shutdown();
  if (handle_) dlclose(handle_);
}

void Plugin::send(std::uint8_t selector, std::uint8_t parm1, std::uintptr_t parm2,
                  std::uintptr_t parm3, std::uintptr_t result, std::int16_t extnVersion) {
  FMX_ExternCallStruct record{};
  record.extnVersion = extnVersion;
  record.resourceID = 0;
  record.entryPoint = entry_;
  record.cfmCalls = 0;
  record.whichCall = selector;
  record.unsafeCalls = 0;
  record.parm1 = parm1;
  record.parm2 = parm2;
  record.parm3 = parm3;
  record.instanceID = reinterpret_cast<fmx::ptrtype>(folder_.c_str());
  record.result = result;
  entry_(&record);
  lastResult_ = static_cast<std::intptr_t>(record.result);
}

std::int32_t Plugin::init(std::int16_t extnVersion) {
  extnVersion_ = extnVersion;
  send(kFMXT_Init, 0, 0, 0, 0, extnVersion);
  const auto answer = static_cast<std::int32_t>(lastResult_);
  enabled_ = answer != kBadExtn && answer != kDoNotEnable;
  refreshTable();
  return answer;
}

void Plugin::idle(std::uint8_t level) {
  if (!enabled_) return;
  send(kFMXT_Idle, level, 0, 0, 0, extnVersion_);
}

std::u16string Plugin::getString(std::uint8_t id, std::uint32_t language,
                                 std::uint32_t bufferUnits) {
  if (!enabled_ || bufferUnits == 0) return {};
  std::u16string buffer(bufferUnits, u'\0');
  send(kFMXT_GetString, id, language, bufferUnits, reinterpret_cast<std::uintptr_t>(buffer.data()),
       extnVersion_);
  buffer.resize(std::char_traits<char16_t>::length(buffer.c_str()));
  return buffer;
}

void Plugin::shutdown() {
  if (!enabled_) return;
  send(kFMXT_Shutdown, 0, 0, 0, 0, extnVersion_);
  enabled_ = false;
  refreshTable();
}

std::vector<fmwrapper::Registration> Plugin::functions() const {
  std::vector<fmwrapper::Registration> out;
  for (const fmwrapper::Registration& r : fmwrapper::registrations()) {
    if (r.function) out.push_back(r);
  }
  return out;
}

void Plugin::refreshTable() {
  registrations_ = fmwrapper::registrations();
  table_.clear();
  for (std::size_t i = 0; i < registrations_.size(); ++i) {
    table_[folded(registrations_[i].name)].push_back(static_cast<int>(i));
  }
  generation_ = ++gGenerations;
}

std::vector<ExternalFunctions::Range> Plugin::lookup(std::u16string_view name) {
  std::vector<Range> ranges;
  auto it = table_.find(folded(name));
  if (it == table_.end()) return ranges;
  for (int i : it->second) {
    const fmwrapper::Registration& r = registrations_[static_cast<std::size_t>(i)];
    ranges.push_back({r.minArgs, r.maxArgs});
  }
  return ranges;
}

int Plugin::resolve(std::u16string_view name, int count) {
  auto it = table_.find(folded(name));
  if (it == table_.end()) return -1;
  for (int i : it->second) {
    const fmwrapper::Registration& r = registrations_[static_cast<std::size_t>(i)];
    if (count >= r.minArgs && (r.maxArgs < 0 || count <= r.maxArgs)) return i;
  }
  return -1;
}

Value Plugin::call(std::u16string_view name, const std::vector<Value>& args) {
  return callResolved(resolve(name, static_cast<int>(args.size())), args);
}

Value Plugin::callResolved(int function, const std::vector<Value>& args) {
  if (function < 0) return Value::text(u"?");
  Value result = call(registrations_[static_cast<std::size_t>(function)], args);
  if (toolkit::sessionStopped()) throw RunStopped(toolkit::stopMessage());
  return result;
}

Value Plugin::call(const fmwrapper::Registration& reg, const std::vector<Value>& args) {
  // As the host application does, a function that fails (or a host library that runs out of
  // memory building its arguments) gives "?".
  try {
    fmx::DataVectUniquePtr vect;
    fmx::LocaleUniquePtr locale;  // the host's default, the same for every text
    for (const Value& a : args) {
      fmx::DataUniquePtr d;
      toData(a, *d, *locale);
      vect->PushBack(*d);
    }
    fmx::ExprEnvUniquePtr env;
    fmx::DataUniquePtr result;
    const fmx::errcode err = reg.function(reg.functionId, *env, *vect, *result);
    if (err != 0) return Value::text(u"?");
    return fromData(*result);
  } catch (...) {
    return Value::text(u"?");
  }
}

void toData(const Value& v, fmx::Data& out, const fmx::Locale& locale) {
  switch (v.kind()) {
    case Value::Kind::Text: {
      const std::u16string t = v.toText();
      fmx::TextUniquePtr text;
      text->AssignUnicodeWithLength(reinterpret_cast<const fmx::uint16*>(t.data()),
                                    static_cast<fmx::uint32>(t.size()));
      out.SetAsText(*text, locale);
      break;
    }
    case Value::Kind::Numeric: {
      const Number& n = v.asNumber();
      fmx::FixPtUniquePtr fix;
      if (n.get_den() == 1 && n.get_num().fits_slong_p()) {
        fix->AssignInt64(n.get_num().get_si());
      } else {
        fix->AssignDouble(n.get_d());
      }
      out.SetAsNumber(*fix);
      break;
    }
    case Value::Kind::Container: {
      fmx::BinaryDataUniquePtr binary;
      for (const Stream& s : v.streams()) {
        if (s.type.size() != 4) continue;
        fmx::QuadCharUniquePtr type(s.type[0], s.type[1], s.type[2], s.type[3]);
        std::string bytes = s.bytes;
        binary->Add(*type, static_cast<fmx::uint32>(bytes.size()), bytes.data());
      }
      out.SetBinaryData(*binary);
      break;
    }
  }
}

Value fromData(const fmx::Data& data) {
  const fmx::int32 type = data.GetNativeType();
  if (type == fmx::Data::kDTBinary) {
    const fmx::BinaryData& b = data.GetBinaryData();
    std::vector<Stream> streams;
    const fmx::int32 count = b.GetCount();
    for (fmx::int32 i = 0; i < count; ++i) {
      fmx::QuadCharUniquePtr q;
      b.GetType(i, *q);
      Stream s;
      for (int k = 0; k < 4; ++k) s.type.push_back(static_cast<char>((*q)[k]));
      s.bytes.resize(b.GetSize(i));
      if (!s.bytes.empty()) {
        b.GetData(i, 0, static_cast<fmx::uint32>(s.bytes.size()), s.bytes.data());
      }
      streams.push_back(std::move(s));
    }
    return Value::container(std::move(streams));
  }
  const fmx::Text& text = data.GetAsText();
  const fmx::uint32 size = text.GetSize();
  std::u16string t(size + 1, u'\0');  // room for a terminator, should the library write one
  if (size > 0) text.GetUnicode(reinterpret_cast<fmx::uint16*>(t.data()), 0, size);
  t.resize(size);
  if (type == fmx::Data::kDTNumber || type == fmx::Data::kDTBoolean) {
    if (std::optional<Number> n = parseNumberText(t)) return Value::number(*n);
  }
  return Value::text(std::move(t));
}

}  // namespace host
