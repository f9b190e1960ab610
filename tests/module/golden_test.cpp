// Golden exchanges: each directory has a contract, and the reply, the log and the operations that it must lead to. With
// ZQRMT_WRITE_GOLDEN set in the environment the files are written instead of compared (tools/update-golden).

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return std::move(text).str();
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// The operations as lines. A group of up to three that is repeated, as polls and packets are, is written once with the
// number of repetitions.
std::string TraceText(const std::vector<Operation>& trace) {
  std::vector<std::string> lines;
  for (const Operation& operation : trace) {
    std::string& line = lines.emplace_back(operation.name);
    for (const std::string& part : {operation.endpoint, operation.arguments}) line += part.empty() ? "" : " " + part;
    line += " -> " + std::to_string(operation.status);
  }
  std::vector<std::string> folded;
  for (auto line = lines.cbegin(); line != lines.cend();) {
    const auto repeats = [&](std::ptrdiff_t size) {
      std::ptrdiff_t count = 1;
      while (lines.cend() - line >= (count + 1) * size && std::equal(line, line + size, line + count * size)) ++count;
      return count;
    };
    std::ptrdiff_t size = 1;
    while (size < 3 && repeats(size) < 3) ++size;
    const std::ptrdiff_t count = repeats(size) < 3 ? 1 : repeats(size);
    if (count == 1) size = 1;
    if (count > 1) folded.push_back(std::to_string(count) + " times:");
    for (std::ptrdiff_t i = 0; i < size; ++i) folded.push_back((count > 1 ? "  " : "") + line[i]);
    line += count * size;
  }
  return Joined(folded);
}

void Check(const fs::path& expected, const std::string& actual) {
  if (std::getenv("ZQRMT_WRITE_GOLDEN") != nullptr) {
    std::ofstream(expected, std::ios::binary) << actual;
    return;
  }
  EXPECT_EQ(actual, ReadFile(expected)) << expected;
}

std::vector<std::string> GoldenNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(ZQRMT_GOLDEN)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

class GoldenTest : public testing::TestWithParam<std::string> {};

// A directory named play_... goes to AudioPlaybackTest, any other to AudioRecordTest.
TEST_P(GoldenTest, GivesTheSameReplyLogAndOperations) {
  const fs::path directory = fs::path(ZQRMT_GOLDEN) / GetParam();
  ModuleUnderTest module;
  module.StartMachine(QuietMachine());
  module.SetFlag("debug3");
  const std::string contract = ReadFile(directory / "contract.json");
  const bool plays = GetParam().starts_with("play_");
  const std::string reply = plays ? module.Play(contract) : module.Record(contract);
  Check(directory / "reply.json", reply + "\n");
  Check(directory / "log.txt", Joined(module.LogLines()));
  Check(directory / "operations.txt", TraceText(ModuleUnderTest::State().trace));
}

// What one call leaves behind would show in the next, so each follows others, of both functions. The event alone is meant to
// stay from call to call.
TEST(GoldenTest, GivesTheSameInAnyOrderOnOneLoadedModule) {
  ModuleUnderTest module;
  module.SetFlag("debug3");
  std::vector<std::string> names = GoldenNames();
  std::erase_if(names, [](const std::string& name) { return name.starts_with("events"); });
  std::mt19937 random(20261123);
  for (int round = 0; round < 3; ++round) {
    std::shuffle(names.begin(), names.end(), random);
    for (const std::string& name : names) {
      const fs::path directory = fs::path(ZQRMT_GOLDEN) / name;
      const std::size_t lines = module.LogLines().size();
      module.StartMachine(QuietMachine());
      const std::string reply = module.Call(name.starts_with("play_") ? "AudioPlaybackTest" : "AudioRecordTest",
                                            ReadFile(directory / "contract.json"));
      std::vector<std::string> log = module.LogLines();
      log.erase(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(lines));
      EXPECT_EQ(reply + "\n", ReadFile(directory / "reply.json")) << name;
      EXPECT_TRUE(ReadFile(directory / "log.txt").ends_with(Joined(log))) << name << "\n" << Joined(log);
      EXPECT_EQ(TraceText(ModuleUnderTest::State().trace), ReadFile(directory / "operations.txt")) << name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Golden, GoldenTest, testing::ValuesIn(GoldenNames()),
                         [](const auto& test) { return test.param; });

}  // namespace
