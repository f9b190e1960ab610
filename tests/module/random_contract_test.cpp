// Random contracts, which are made of the golden ones by dropping, doubling, wrapping and replacing parts of them.

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/istreamwrapper.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <utility>

#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"
#include "tests/support/process.h"

namespace {

using rapidjson::Document;
using rapidjson::Value;

// Numbers with a fraction have few digits: the parser may read a long one wrong by its last bit, so that it changes
// with each call.
constexpr const char* kValues =
    R"([null,true,false,0,-0,1,-1,7,255,256,65535,65536,70000,-32769,2147483647,2147483648,-2147483648,4294967295,4294967296,
    9223372036854775807,-9223372036854775808,18446744073709551615,0.0,-0.5,4.0,1e3,1e-7,1e20,1e39,1234567.25,"","x","5",
    "a\u0000b","\u00e4","\ud83d\ude00","\"\\\n\u0001",[],{},[[]],[null,0,0.0,"a",{},[]],[{"k":"v","l":"w"},{"k":1},{"":""}],
    [1,-1,300,2.5,"x",null,{},99999999999],[{"Name":"a","ValueArray":["1",2]},{"Name":"a[]"}],{"k":{"k":[]}}])";

constexpr std::uint32_t kCases = ZQRMT_RANDOM_CASES;

class RandomContract {
 public:
  RandomContract(std::uint32_t seed, const std::vector<Document>& contracts) : random_(seed) {
    values_.Parse(kValues);
    contract_.CopyFrom(contracts[Below(contracts.size())], contract_.GetAllocator());
    share_ = 1 + Below(30);
    Mutate(contract_);
  }
  std::string Text() const {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer writer(buffer);
    contract_.Accept(writer);
    return buffer.GetString();
  }

 private:
  std::size_t Below(std::size_t count) { return random_() % count; }
  bool Strikes() { return Below(100) < share_; }
  Value Copy(const Value& value) { return Value(value, contract_.GetAllocator()); }
  Value AnyValue() { return Copy(values_[static_cast<unsigned>(Below(values_.Size()))]); }

  // Changes some of the members or elements of `value`.
  void Mutate(Value& value) {
    if (value.IsObject()) return MutateMembers(value);
    if (!value.IsArray()) return;
    for (Value& element : value.GetArray()) Vary(element);
    if (Strikes()) value.PushBack(AnyValue(), contract_.GetAllocator());
    while (!value.Empty() && Strikes()) value.PopBack();
  }

  void Vary(Value& value) {
    Mutate(value);
    if (!Strikes()) return;
    Value old = std::move(value);
    value = AnyValue();
    if (value.IsArray() && Below(2) == 0) value.PushBack(old, contract_.GetAllocator());
  }

  void MutateMembers(Value& object) {
    std::vector<std::pair<Value, Value>> members;
    for (const auto& member : std::as_const(object).GetObject())
      members.emplace_back(Copy(member.name), Copy(member.value));
    for (std::size_t i = 0, count = members.size(); i < count; ++i) {
      Vary(members[i].second);
      if (Strikes()) members[i].second.Swap(members[Below(count)].second);
      if (Strikes()) members.emplace_back(Copy(members[i].first), AnyValue());
    }
    std::shuffle(members.begin(), members.end(), random_);
    object.RemoveAllMembers();
    for (auto& [name, value] : members) {
      if (Strikes() && Strikes()) continue;
      // No tone is played without an endpoint.
      if (std::string_view(name.GetString()) == "DeviceInstanceID") value.SetString("");
      object.AddMember(name, value, contract_.GetAllocator());
    }
  }

  std::mt19937 random_;
  Document values_, contract_;
  std::size_t share_ = 0;  // percent
};

std::vector<Document> GoldenContracts() {
  std::set<std::filesystem::path> paths;  // sorted: the same cases on every run
  for (const auto& entry : std::filesystem::directory_iterator(ZQRMT_GOLDEN)) paths.insert(entry.path());
  std::vector<Document> contracts;
  for (const auto& path : paths) {
    std::ifstream file(path / "contract.json");
    rapidjson::IStreamWrapper stream(file);
    EXPECT_FALSE(contracts.emplace_back().ParseStream(stream).HasParseError()) << path;
  }
  return contracts;
}

TEST(RandomContracts, ComeToRestAndLeaveNothing) {
  ModuleUnderTest module;
  module.StartMachine(QuietMachine());
  const std::vector<Document> contracts = GoldenContracts();
  std::size_t settled = 0;
  for (std::uint32_t seed = 0; seed < kCases; ++seed) {
    const std::string text = RandomContract(seed, contracts).Text();
    const std::string first = module.Record(text), second = module.Record(first), third = module.Record(second);
    ASSERT_EQ(second, third) << "seed " << seed << ": " << text;
    ASSERT_FALSE(Document().Parse(first.c_str()).HasParseError()) << "seed " << seed << ": " << text << '\n' << first;
    if (seed == kCases / 3) settled = BytesInUse();
  }
  EXPECT_EQ(ModuleUnderTest::State().liveObjects, 0);
  // A leak of twenty bytes for each call would show. The sanitizers use another heap, in which they look for leaks.
  EXPECT_LT(BytesInUse(), settled + 20 * 2 * kCases);
}

}  // namespace
