// What a host program uses: the registration table and fault injection.
#include <gtest/gtest.h>

#include <string>

#include "fmwrapper/host_api.h"
#include "fmx/FMWrapper.h"

namespace {

fmx::TextUniquePtr utf8(const std::string& s) {
  fmx::TextUniquePtr t;
  t->Assign(s.c_str(), fmx::Text::kEncoding_UTF8);
  return t;
}

fmx::errcode first(fmx::int16, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&) {
  return 1;
}
fmx::errcode second(fmx::int16, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&) {
  return 2;
}

TEST(Registration, ReplaceUnregisterAndFindIgnoringCase) {
  fmwrapper::clearRegistrations();
  fmx::QuadCharUniquePtr id('Z', '7', 'm', 'o'), other('A', 'b', 'c', 'd');
  using Env = fmx::ExprEnv;
  EXPECT_EQ(
      Env::RegisterExternalFunction(*id, 4300, *utf8("Mosa_Dialog"),
                                    *utf8("Mosa_Dialog( switches ; text )"), 1, 6, 0xE900, first),
      0);
  EXPECT_EQ(Env::RegisterExternalFunction(*id, 0, *utf8("Mosa_Version"), *utf8("Mosa_Version"), 0,
                                          1, 0xFF01, first),
            0);
  EXPECT_EQ(Env::RegisterExternalFunction(*other, 4300, *utf8("Other_Dialog"), *utf8("x"), 0, 0, 0,
                                          first),
            0);
  // The same plug-in and function id again: replaced in place.
  EXPECT_EQ(Env::RegisterExternalFunction(*id, 4300, *utf8("Mosa_Dialog2"), *utf8("p"), 2, 3,
                                          0xE900, second),
            0);
  EXPECT_EQ(Env::RegisterExternalFunction(*id, 9, *utf8("Bad"), *utf8("p"), 0, 0, 0, nullptr), -50);

  auto all = fmwrapper::registrations();
  ASSERT_EQ(all.size(), 3u);
  EXPECT_EQ(all[0].pluginId, "Z7mo");
  EXPECT_EQ(all[0].name, u"Mosa_Dialog2");
  EXPECT_EQ(all[0].minArgs, 2);
  EXPECT_EQ(all[0].function, &second);
  EXPECT_EQ(all[1].flags, 0xFF01u);

  auto found = fmwrapper::findRegistration(u"mosa_VERSION");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->functionId, 0);
  EXPECT_FALSE(fmwrapper::findRegistration(u"Mosa_Versio"));

  EXPECT_EQ(Env::UnRegisterExternalFunction(*id, 0), 0);
  EXPECT_EQ(Env::UnRegisterExternalFunction(*id, 0), -50);
  EXPECT_FALSE(fmwrapper::findRegistration(u"Mosa_Version"));
  EXPECT_TRUE(fmwrapper::findRegistration(u"other_dialog"));
  fmwrapper::clearRegistrations();
  EXPECT_TRUE(fmwrapper::registrations().empty());
}

TEST(Faults, TheKthCallFailsAndDoesNothingElse) {
  auto t = utf8("keep");
  const std::uint64_t before = fmwrapper::callCount();
  t->GetSize();
  EXPECT_EQ(fmwrapper::callCount(), before + 1);

  fmwrapper::injectFault(2, 1);
  EXPECT_EQ(t->GetSize(), 4u);                                                 // call 1: fine
  EXPECT_THROW(t->Assign("lost", fmx::Text::kEncoding_UTF8), std::bad_alloc);  // call 2
  EXPECT_EQ(t->GetSize(), 4u);  // the failed call changed nothing
  t->Assign("again", fmx::Text::kEncoding_UTF8);
  EXPECT_EQ(t->GetSize(), 5u);

  fmwrapper::injectFault(1, 2);
  try {
    t->Uppercase();
    FAIL() << "no exception";
  } catch (const std::bad_alloc&) {
    FAIL() << "code 2 is not out of memory";
  } catch (const std::exception&) {
  }

  // A failing constructor hands out nothing; no object is left alive.
  const std::int64_t live = fmwrapper::liveObjects();
  fmwrapper::injectFault(1, 1);
  EXPECT_THROW(fmx::DataUniquePtr(), std::bad_alloc);
  EXPECT_EQ(fmwrapper::liveObjects(), live);

  // A fault due on a delete passes to the next call, so no object leaks.
  {
    fmx::FixPtUniquePtr n(3);
    fmwrapper::injectFault(1, 2);
  }
  EXPECT_EQ(fmwrapper::liveObjects(), live);
  EXPECT_THROW(t->GetSize(), std::exception);

  // Cancelled faults never fire.
  fmwrapper::injectFault(1, 1);
  fmwrapper::injectFault(0, 1);
  EXPECT_EQ(t->GetSize(), 5u);
}

}  // namespace
