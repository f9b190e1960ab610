// Lets the allocations of a call fail one at a time, and calls the module with texts that there is no memory for.
//
// With ZQRMT_EVERY_ALLOCATION in the environment all of them fail, otherwise the first twenty and then every now and again.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>

#include "audiotests/zqrmt_return_codes.h"
#include "audiotests/zqrmt_tests_audio.h"
#include "platform/audio_platform.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"
#include "tests/support/process.h"
#include "text/utf.h"

namespace {

using Text = std::unique_ptr<char16_t, decltype(&std::free)>;
using PlatformText = std::unique_ptr<char, decltype(&std::free)>;

std::string AllRecords() {
  std::ifstream file(ZQRMT_GOLDEN "/all_records/contract.json");
  return std::string(std::istreambuf_iterator<char>(file), {});
}

class AllocationTest : public testing::Test {
 protected:
  AllocationTest() {
    std::filesystem::create_directory(log_);
    module_.emplace(log_);
    std::ofstream(machine_) << QuietMachine();
  }
  ~AllocationTest() override { AudioPlatformUninitialize(); }

  void StartMachine() const { ASSERT_EQ(AudioPlatformInitialize(("virtual:" + machine_).c_str()), 0); }

  Text Call(const char* function, const std::u16string& contract) const {
    return Text(reinterpret_cast<ZQRMTTestFunction*>(module_->Export(function))(contract.c_str()), &std::free);
  }

  // Lets allocation after allocation of `action` fail until it has come to its end without; `prepare` runs before each
  // time and `check` after it. All of it twice: what the second time leaves in use beyond the first is lost.
  static void Sweep(const std::function<void()>& prepare, const std::function<void()>& action,
                    const std::function<void()>& check) {
    const std::uint64_t failed = SweepOnce(prepare, action, check);
    const std::size_t settled = BytesInUse();
    SweepOnce(prepare, action, check);
    std::printf("%llu allocations failed, one at a time.\n", static_cast<unsigned long long>(failed));
    // One block of a tone or a pool would show. The heap itself keeps some kilobytes more or less, so smaller losses are
    // for the sanitizers to find, which use a heap of their own.
    EXPECT_LT(BytesInUse(), settled + 60000);
  }

  // Returns how many have failed.
  static std::uint64_t SweepOnce(const std::function<void()>& prepare, const std::function<void()>& action,
                                 const std::function<void()>& check) {
    const bool takesEvery = std::getenv("ZQRMT_EVERY_ALLOCATION") != nullptr;
    std::uint64_t number = 1, failed = 0;
    while (!HasFailure()) {
      prepare();
      FailAllocation(number);
      action();
      const bool hasFailed = HasAllocationFailed();
      FailAllocation(0);
      check();
      if (!hasFailed) break;
      ++failed;
      number += takesEvery ? 1 : 1 + number / 20;
    }
    return failed;
  }

  // Lets the allocations of a call fail, and then makes it once more.
  void SweepCall(const char* function, const std::string& contract) {
    const std::u16string text = text::ToUtf16(contract);
    Text reply(nullptr, &std::free);
    std::u16string whole;
    std::uint64_t answered = 0;
    Sweep([this] { StartMachine(); }, [&] { reply = Call(function, text); },
          [&] {
            const MachineState state = ModuleUnderTest::State();
            EXPECT_EQ(state.liveObjects, 0);
            if (reply == nullptr) return;
            ++answered;
            whole = reply.get();
            EXPECT_TRUE(whole.starts_with(u"{\"CoreData\":{") && whole.ends_with(u"}}")) << text::ToUtf8(whole);
            // A failing call leaves the levels that it had set by then, and changes no others.
            const bool hasPassed = whole.find(u"passed.") != whole.npos;
            for (const auto& [endpoint, volume] : state.volumes) {
              EXPECT_TRUE(volume.muted || !hasPassed) << endpoint;
              for (const double level : volume.levels) EXPECT_TRUE(level < 1.0 || !hasPassed) << endpoint;
            }
          });
    StartMachine();
    EXPECT_EQ(Call(function, text).get(), whole);
    EXPECT_GE(answered, 1U);
  }

  TempDirectory directory_;
  const std::filesystem::path log_ = directory_.Path() / "log";
  const std::string machine_ = directory_ / "machine.json";
  std::optional<ModuleFile> module_;
};

TEST_F(AllocationTest, OfAContractWithEveryRecordAndAllLogLines) {
  std::ofstream{log_ / "debug3.flg"};
  SweepCall("AudioPlaybackTest", AllRecords());
}

TEST_F(AllocationTest, OfAPlaybackTest) { SweepCall("AudioPlaybackTest", kPlayContract); }

TEST_F(AllocationTest, OfARecordTest) { SweepCall("AudioRecordTest", kRecordContract); }

TEST_F(AllocationTest, OfTextsThatAreNoContract) {
  for (const char* text : {"", "[[[{\"a\":[1e5,\"text that is no short one\"", "{\"a\":1.0e-2147483639}"}) {
    SweepCall("AudioRecordTest", text);
  }
}

TEST_F(AllocationTest, OfThePlatformItself) {
  const std::string description = "virtual:" + machine_, wrong = "virtual:" + machine_ + "/none", none = "none";
  for (const std::string& named : {description, wrong, none}) {
    std::int32_t status = 0;
    Sweep([] { AudioPlatformUninitialize(); }, [&] { status = AudioPlatformInitialize(named.c_str()); },
          [&] { EXPECT_EQ(status == 0, AudioPlatformError()[0] == '\0'); });
    EXPECT_EQ(status == 0, named == description);
  }
  PlatformText state(nullptr, &std::free);
  std::string whole;
  Sweep([this] { StartMachine(), Call("AudioRecordTest", text::ToUtf16(kRecordContract)); },
        [&] { state.reset(AudioPlatformState()); }, [&] { whole = state == nullptr ? "" : state.get(); });
  EXPECT_TRUE(whole.starts_with("{\"platform\":") && whole.ends_with("]}"));
}

// Not found as a test of its own: it takes gigabytes, and a minute.
TEST_F(AllocationTest, OfTextsBeyondTheMemory) {
  const rlimit five{std::uint64_t{5} << 30, std::uint64_t{5} << 30};
  ASSERT_EQ(setrlimit(RLIMIT_AS, &five), 0);
  const std::pair<const char16_t*, const char16_t*> kForms[] = {{u"{\"CoreData\":{\"TaskID\":\"", u"x"},
                                                                {u"{\"CoreData\":{\"DriverInfoList\":[1", u",1"},
                                                                {u"[", u"["},
                                                                {u"", u"\\"}};
  for (const std::size_t megabytes : {300U, 1000U}) {
    for (const auto& [begin, piece] : kForms) {
      StartMachine();
      std::u16string text = begin;
      text.reserve(megabytes * 500000 + 10);
      while (text.size() < megabytes * 500000) text += piece;
      if (*piece == u'x') text += u"\"}}";
      const Text reply = Call("AudioRecordTest", text);
      std::printf("%zu MB of \"%s\": %s\n", megabytes, text::ToUtf8(piece).c_str(),
                  reply == nullptr ? "null" : text::ToUtf8(std::u16string_view(reply.get()).substr(0, 120)).c_str());
    }
  }
}

}  // namespace
