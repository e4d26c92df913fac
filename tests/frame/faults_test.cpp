// Host calls that fail: each FM_* call of start-up, shut-down and of a function call is made to
// fail in turn. Nothing escapes the entry point or the dispatcher, and no host object is left
// behind.
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <vector>

#include "frame/frame.h"
#include "plugin_fixture.h"
#include "util/errors.h"
#include "util/hosttext.h"

using namespace mosa_test;

namespace {

// How a faulted run ended.
enum class Outcome { Returned, OutOfMemory, OtherFailure, Unexpected };

Outcome RunWithFault(const std::function<void()>& run, std::uint64_t k, int code) {
  Outcome outcome = Outcome::Returned;
  fmwrapper::injectFault(k, code);
  try {
    run();
  } catch (const std::bad_alloc&) {
    outcome = Outcome::OutOfMemory;
  } catch (const std::exception&) {
    outcome = Outcome::OtherFailure;
  } catch (...) {
    outcome = Outcome::Unexpected;
  }
  // A fault that came due on a delete waits for the next call; it must not hit the checks below.
  fmwrapper::injectFault(0, 0);
  return outcome;
}

std::uint64_t CallsOf(const std::function<void()>& run) {
  const std::uint64_t before = fmwrapper::callCount();
  run();
  return fmwrapper::callCount() - before;
}

class EntryFaults : public ::testing::Test {
 protected:
  void SetUp() override {
    fmwrapper::clearRegistrations();
    gXP_AlertHook = [](std::int16_t, long, const std::string&) {};
  }
  void TearDown() override {
    shutdown();
    gXP_AlertHook = nullptr;
  }
};

TEST_F(EntryFaults, StartUpAndShutDownSurviveEveryFailingCall) {
  ASSERT_EQ(init(60), 51);
  shutdown();
  const std::int64_t live = fmwrapper::liveObjects();
  const std::uint64_t calls = CallsOf([] { init(60); });
  shutdown();
  ASSERT_GT(calls, 20u);
  for (std::uint64_t k = 1; k <= calls; ++k) {
    fmx::int32 answer = 0;
    const Outcome outcome = RunWithFault([&] { answer = init(60); }, k, k % 2 ? 1 : 2);
    ASSERT_EQ(outcome, Outcome::Returned) << "init, fault at call " << k;
    // A failed registration keeps the plug-in enabled with fewer functions; a failed start-up
    // does not enable it.
    EXPECT_TRUE(answer == 51 || answer == -2) << "fault at call " << k << ": " << answer;
    EXPECT_LE(fmwrapper::registrations().size(), 20u);
    shutdown();
    EXPECT_TRUE(fmwrapper::registrations().empty()) << "fault at call " << k;
    ASSERT_EQ(fmwrapper::liveObjects(), live) << "fault at call " << k;
  }
  EXPECT_EQ(init(60), 51);
  EXPECT_EQ(fmwrapper::registrations().size(), 20u);
  // A shut-down whose host calls fail returns all the same.
  for (fmx::uchar selector : {kFMXT_Idle, kFMXT_GetString, kFMXT_Shutdown}) {
    std::u16string buffer(64, u'\0');
    const auto run = [&] {
      callEntry(selector, buildBundle(), 60, 1, 0, 64,
                reinterpret_cast<fmx::ptrtype>(buffer.data()));
    };
    for (std::uint64_t k = 1; k <= 5; ++k)
      EXPECT_EQ(RunWithFault(run, k, 1), Outcome::Returned) << int(selector);
  }
}

TEST_F(EntryFaults, FunctionCallsAnswerAndNeverThrow) {
  ASSERT_EQ(init(60), 51);
  struct Call {
    short id;
    std::vector<std::string> args;
  };
  // Every function that answers without a dialog.
  const std::vector<Call> calls = {
      {0, {}},
      {1, {"-getversionnumber"}},
      {1, {"-DebugTxtsOFF"}},
      {4304, {""}},
      {4305, {"-text2"}},
      {4306, {"-popup1"}},
      {4307, {"-SetCustomIcon", ""}},
      {4311, {"", "Title"}},
      {4312, {"", "a", "b"}},
      {4313, {"", "Name", "City"}},
      {4314, {"", "Item"}},
      {4315, {"-popup1", "Red\rGreen"}},
      {4316, {"-once", "10", "20"}},
      {4317, {"-progressbardefunctticks", "60"}},
  };
  for (const Call& call : calls) {
    fmx::DataVectUniquePtr args;
    fmx::LocaleUniquePtr locale;
    for (const std::string& arg : call.args) {
      fmx::TextUniquePtr text;
      text->Assign(arg.c_str(), fmx::Text::kEncoding_UTF8);
      fmx::DataUniquePtr data;
      data->SetAsText(*text, *locale);
      args->PushBack(*data);
    }
    fmx::ExprEnvUniquePtr env;
    fmx::DataUniquePtr result;
    const auto dispatch = [&] { ZkMosa7_Dispatch(call.id, *env, *args, *result); };
    dispatch();  // the dialog state makes its host texts on first use
    const std::int64_t live = fmwrapper::liveObjects();
    const std::uint64_t n = CallsOf(dispatch);
    ASSERT_EQ(fmwrapper::liveObjects(), live) << call.id;
    for (std::uint64_t k = 1; k <= n; ++k) {
      ASSERT_EQ(RunWithFault(dispatch, k, k % 2 ? 1 : 2), Outcome::Returned)
          << call.id << ": fault at call " << k;
      ASSERT_EQ(fmwrapper::liveObjects(), live) << call.id << ": fault at call " << k;
    }
  }
  // An out-of-memory failure that reaches the dispatcher is answered as an error text.
  fmx::DataVectUniquePtr none;
  fmx::ExprEnvUniquePtr env;
  fmx::DataUniquePtr result;
  std::string lastAnswer;
  for (std::uint64_t k = 1; k <= 3; ++k) {
    RunWithFault([&] { ZkMosa7_Dispatch(4304, *env, *none, *result); }, k, 1);
    lastAnswer = toUtf8(result->GetAsText());
    if (lastAnswer == "$$-108") break;
  }
  EXPECT_EQ(lastAnswer, "$$-108");
}

}  // namespace
