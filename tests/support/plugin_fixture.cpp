#include "plugin_fixture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "fmwrapper/host_api.h"
#include "icons/icons.h"

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

namespace {

std::string call(Zk7Handler handler, short funcId, const std::vector<Arg>& args) {
  fmx::DataVectUniquePtr vect;
  fmx::LocaleUniquePtr locale;
  for (const Arg& arg : args) {
    fmx::DataUniquePtr data;
    if (const auto* s = std::get_if<std::string>(&arg)) {
      fmx::TextUniquePtr txt;
      txt->AssignWithLength(s->data(), static_cast<fmx::uint32>(s->size()),
                            fmx::Text::kEncoding_UTF8);
      data->SetAsText(*txt, *locale);
    } else {
      fmx::FixPtUniquePtr number(std::get<std::int32_t>(arg));
      data->SetAsNumber(*number);
    }
    vect->PushBack(*data);
  }
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  EXPECT_EQ(handler(funcId, *env, *vect, *result), 0);
  return toUtf8(result->GetAsText());
}

}  // namespace

std::string callFunction(short funcId, const std::vector<std::string>& args) {
  return call(ZkMosa7_Dispatch, funcId, std::vector<Arg>(args.begin(), args.end()));
}

std::string callHandler(Zk7Handler handler, const std::vector<Arg>& args) {
  return call(handler, 4300, args);
}

std::u16string toU16(const std::string& utf8) {
  return fmwrapper::utf8ToUtf16(utf8);
}

std::u16string Row(const UniChar* row) {
  std::u16string s;
  for (int i = 0; i < kMosaRowUnits && row[i] != 0; ++i) s.push_back(static_cast<char16_t>(row[i]));
  return s;
}

void ResetModelState() {
  for (int n = 0; n < kMosaEntries; ++n) {
    gLabelTextsUNI[n][0] = 0;
    gInputTextUNI[n][0] = 0;
    gItemSelected[n] = 1;
    gPopupTxt(n)->DeleteText(0, fmx::kSize_End);
  }
  gDefaultDialogTitleUNI[0] = 0;
  gCustomWindPosition = kPositionDefault;
  gAnimateWindPosition = 0;
  gLeft = 0;
  gTop = 0;
  gInitialSelectStr[0] = 0;
  gProgressDefunctTicks = kDefaultDefunctTicks;
  gLastButtonNumberClicked = 0;
  gLastButtonTextClickedTxt()->DeleteText(0, fmx::kSize_End);
  gHistoryTxt()->DeleteText(0, fmx::kSize_End);
  gHistoryTxt_Stored = 0;
  gIconServicesAvailable = 1;
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
