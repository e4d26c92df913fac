// The module as a host loads it: only the entry point is reachable.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "plugin_fixture.h"

TEST(Module, LoadsInitialisesAndShutsDownThroughItsEntryPoint) {
  fmwrapper::clearRegistrations();
  void* module = dlopen(MOSA_TEST_MODULE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << dlerror();
  auto entry = reinterpret_cast<FMX_ExternCallProc>(dlsym(module, "FMExternCallProc"));
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(dlsym(module, "ZkMosa7_Dispatch"), nullptr);

  const std::string bundle = mosa_test::buildBundle();
  FMX_ExternCallStruct pb{};
  pb.extnVersion = 60;
  pb.whichCall = kFMXT_Init;
  pb.instanceID = reinterpret_cast<fmx::ptrtype>(bundle.c_str());
  entry(&pb);
  EXPECT_EQ(static_cast<std::intptr_t>(pb.result), 51);
  const auto regs = fmwrapper::registrations();
  ASSERT_EQ(regs.size(), 20u);

  fmx::DataVectUniquePtr args;
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  EXPECT_EQ(regs[18].function(0, *env, *args, *result), 0);
  EXPECT_EQ(mosa_test::toUtf8(result->GetAsText()), "Zelk Mosa Plug-In 4.5.2");

  pb.whichCall = kFMXT_Shutdown;
  entry(&pb);
  EXPECT_TRUE(fmwrapper::registrations().empty());
  dlclose(module);
}
