#include "host/contract/contract_comparison.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "host/contract/parsed_contract.h"

namespace host {
namespace {

using rapidjson::SizeType;
using rapidjson::Value;

constexpr std::int64_t kDeviceListPage = 20;  // entries of a device list that come back at a time

std::string_view TextOf(const Value& text) {
  return {text.GetString(), text.GetStringLength()};
}

bool IsContainer(const Value& value) {
  return value.IsObject() || value.IsArray();
}

// True and false are types of their own.
bool IsOneKind(const Value& left, const Value& right) {
  return left.GetType() == right.GetType() || (left.IsBool() && right.IsBool());
}

bool IsSameNumber(const Value& left, const Value& right) {
  if (left.IsDouble() != right.IsDouble()) return false;
  if (left.IsDouble()) {
    return left.GetDouble() == right.GetDouble() && std::signbit(left.GetDouble()) == std::signbit(right.GetDouble());
  }
  if (left.IsInt64() && right.IsInt64()) return left.GetInt64() == right.GetInt64();
  return left.IsUint64() && right.IsUint64() && left.GetUint64() == right.GetUint64();
}

// Of values that aren't objects or arrays.
bool IsSame(const Value& left, const Value& right) {
  if (left.GetType() != right.GetType()) return false;
  if (left.IsString()) return TextOf(left) == TextOf(right);
  return !left.IsNumber() || IsSameNumber(left, right);
}

class Comparison {
 public:
  Comparison(Findings& findings, const IsDefault& isDefault) : findings_(findings), isDefault_(isDefault) {}

  // Recursive, but no deeper than `received` is nested.
  void Compare(const Value& sent, const Value& received) {
    if (sent.IsObject() && received.IsObject()) {
      CompareMembers(sent, received);
    } else if (sent.IsArray() && received.IsArray()) {
      CompareElements(sent, received, CameFrom(sent, received));
    } else if (!IsSame(sent, received)) {
      findings_.changed.push_back({path_.Text(), &sent, &received});
    }
  }

 private:
  using Members = std::unordered_map<std::string_view, const Value*>;
  using Origin = std::function<bool(SizeType element)>;  // whether an element sent is among those received

  void CompareMembers(const Value& sent, const Value& received) {
    Members back;
    for (const auto& member : received.GetObject()) back.emplace(TextOf(member.name), &member.value);
    std::unordered_set<std::string_view> met(sent.MemberCount());
    for (const auto& member : sent.GetObject()) {
      const std::string_view key = TextOf(member.name);
      if (!met.insert(key).second) continue;
      const auto found = back.find(key);
      path_.Push(key);
      if (found == back.end()) {
        Drop(member.value);
      } else if (const Value* page = key == "Segment" ? FindMember(&received, "CurrentIndex") : nullptr;
                 page != nullptr && page->IsInt() && member.value.IsArray() && found->second->IsArray()) {
        const std::int64_t first = page->GetInt() * kDeviceListPage;
        CompareElements(member.value, *found->second, [first](SizeType element) { return element >= first; });
      } else {
        Compare(member.value, *found->second);
      }
      path_.Pop();
    }
    for (const auto& member : received.GetObject()) {
      const std::string_view key = TextOf(member.name);
      if (!met.contains(key)) Add(key, member.value);
    }
  }

  static Origin CameFrom(const Value& sent, const Value& received) {
    const auto isOfKind = [&](const Value& element) { return IsOneKind(element, received[0]); };
    const bool skipsOthers = !received.Empty() && received.Size() < sent.Size() &&
                             std::count_if(sent.Begin(), sent.End(), isOfKind) == std::ptrdiff_t{received.Size()};
    if (!skipsOthers) return [](SizeType) { return true; };
    return [&](SizeType element) { return IsOneKind(sent[element], received[0]); };
  }

  void CompareElements(const Value& sent, const Value& received, const Origin& cameBack) {
    SizeType next = 0;
    for (SizeType element = 0; element < sent.Size(); ++element) {
      path_.Push(std::size_t{element});
      if (next < received.Size() && cameBack(element)) {
        Compare(sent[element], received[next++]);
      } else {
        Drop(sent[element]);
      }
      path_.Pop();
    }
    for (; next < received.Size(); ++next) Add(std::size_t{next}, received[next]);
  }

  void Drop(const Value& sent) { findings_.dropped.push_back({path_.Text(), &sent, nullptr}); }

  void Add(ContractPath::Step step, const Value& received) {
    path_.Push(step);
    auto& list = isDefault_(received, path_) ? findings_.added : findings_.addedOther;
    list.push_back({path_.Text(), nullptr, &received});
    path_.Pop();
  }

  Findings& findings_;
  const IsDefault& isDefault_;
  ContractPath path_;
};

void NoteDoubledKeys(const Value& object, ContractPath& path, std::vector<Finding>& doubled) {
  if (object.MemberCount() < 2) return;
  std::unordered_set<std::string_view> met(object.MemberCount()), noted;
  for (const auto& member : object.GetObject()) {
    const std::string_view key = TextOf(member.name);
    if (met.insert(key).second || !noted.insert(key).second) continue;
    path.Push(key);
    doubled.push_back({path.Text()});
    path.Pop();
  }
}

// Goes everywhere, so its depth must not become that of the stack.
std::vector<Finding> FindDoubledKeys(const Value& root) {
  struct Level {
    const Value* container;
    SizeType next = 0;  // child
  };
  std::vector<Finding> doubled;
  std::vector<Level> levels;
  ContractPath path;
  const auto enter = [&](const Value& container) {
    if (container.IsObject()) NoteDoubledKeys(container, path, doubled);
    levels.push_back({&container});
  };
  if (IsContainer(root)) enter(root);
  while (!levels.empty()) {
    const Value& container = *levels.back().container;
    const SizeType child = levels.back().next++;
    if (child == (container.IsObject() ? container.MemberCount() : container.Size())) {
      levels.pop_back();
      if (!levels.empty()) path.Pop();
      continue;
    }
    const auto* member = container.IsObject() ? &container.MemberBegin()[child] : nullptr;
    const Value& value = member != nullptr ? member->value : container[child];
    if (!IsContainer(value)) continue;
    path.Push(member != nullptr ? ContractPath::Step(TextOf(member->name)) : std::size_t{child});
    enter(value);
  }
  return doubled;
}

}  // namespace

bool Findings::HasOnlyDefaults() const {
  return changed.empty() && dropped.empty() && addedOther.empty() && doubled.empty();
}

Findings CompareContracts(const Value& sent, const Value& received, const IsDefault& isDefault) {
  Findings findings;
  Comparison(findings, isDefault).Compare(sent, received);
  findings.doubled = FindDoubledKeys(sent);
  return findings;
}

}  // namespace host
