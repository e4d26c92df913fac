#include "host_fixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "frame/frame.h"

namespace mosa_test {

std::string buildBundle() {
  return MOSA_TEST_BUNDLE;
}

fmx::ptrtype callEntry(fmx::uchar selector, const std::string& bundle, fmx::int16 extnVersion,
                       fmx::uchar parm1, fmx::ptrtype parm2, fmx::ptrtype parm3,
                       fmx::ptrtype result, fmx::int16 resourceId) {
  FMX_ExternCallStruct pb{};
  pb.extnVersion = extnVersion;
  pb.resourceID = resourceId;
  pb.entryPoint = FMExternCallProc;
  pb.whichCall = selector;
  pb.parm1 = parm1;
  pb.parm2 = parm2;
  pb.parm3 = parm3;
  pb.instanceID = reinterpret_cast<fmx::ptrtype>(bundle.c_str());
  pb.result = result;
  FMExternCallProc(&pb);
  return pb.result;
}

fmx::int32 init(fmx::int16 extnVersion, const std::string& bundle) {
  return static_cast<fmx::int32>(
      static_cast<std::intptr_t>(callEntry(kFMXT_Init, bundle, extnVersion)));
}

void shutdown(const std::string& bundle) {
  callEntry(kFMXT_Shutdown, bundle);
}

std::u16string getString(int id, fmx::uint32 bufferUnits, const std::string& bundle) {
  std::u16string buffer(bufferUnits, u'\0');
  callEntry(kFMXT_GetString, bundle, 60, static_cast<fmx::uchar>(id), 0, bufferUnits,
            reinterpret_cast<fmx::ptrtype>(buffer.data()));
  return buffer.substr(0, buffer.find(u'\0'));
}

std::string toUtf8(const std::u16string& text) {
  return fmwrapper::utf16ToUtf8(text);
}

std::string toUtf8(const fmx::Text& text) {
  std::u16string units(text.GetSize(), u'\0');
  if (!units.empty())
    text.GetUnicode(reinterpret_cast<fmx::uint16*>(units.data()), 0, text.GetSize());
  return toUtf8(units);
}

std::string callFunction(short funcId, const std::vector<std::string>& args) {
  fmx::DataVectUniquePtr vect;
  fmx::LocaleUniquePtr locale;
  for (const std::string& arg : args) {
    fmx::TextUniquePtr text;
    text->Assign(arg.c_str(), fmx::Text::kEncoding_UTF8);
    fmx::DataUniquePtr data;
    data->SetAsText(*text, *locale);
    vect->PushBack(*data);
  }
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  ZkMosa7_Dispatch(funcId, *env, *vect, *result);
  return toUtf8(result->GetAsText());
}

TempBundle::TempBundle() {
  char pattern[] = "/tmp/mosa-bundle-XXXXXX";
  const char* made = mkdtemp(pattern);
  path_ = made ? made : "/tmp";
}

TempBundle::~TempBundle() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

void TempBundle::write(const std::string& relative, const std::string& content) const {
  std::filesystem::path file = std::filesystem::path(path_) / "Resources" / relative;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
}

}  // namespace mosa_test
