#include "host/contract/contract_comparison.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "host/contract/parsed_contract.h"

namespace host {
namespace {

constexpr std::int64_t kDeviceListPage = 20;  // entries of a device list that come back at a time

const Json::object_t& MembersOf(const Json& object) { return object.get_ref<const Json::object_t&>(); }

// All numbers are one kind.
bool IsOneKind(const Json& left, const Json& right) {
  return left.type() == right.type() || (left.is_number() && right.is_number());
}

// Of values that aren't objects or arrays.
bool IsSame(const Json& left, const Json& right) {
  if (left.type() != right.type() || left != right) return false;
  return !left.is_number_float() || std::signbit(left.get<double>()) == std::signbit(right.get<double>());
}

class Comparison {
 public:
  Comparison(Findings& findings, const IsDefault& isDefault) : findings_(findings), isDefault_(isDefault) {}

  // Recursive, but no deeper than `received` is nested.
  void Compare(const Json& sent, const Json& received) {
    if (sent.is_object() && received.is_object()) {
      CompareMembers(sent, received);
    } else if (sent.is_array() && received.is_array()) {
      CompareElements(sent, received, CameFrom(sent, received));
    } else if (!IsSame(sent, received)) {
      findings_.changed.push_back({path_.Text(), &sent, &received});
    }
  }

 private:
  using Members = std::unordered_map<std::string_view, const Json*>;
  using Origin = std::function<bool(std::size_t element)>;  // whether an element sent is among those received

  void CompareMembers(const Json& sent, const Json& received) {
    Members back;
    for (const auto& [key, value] : MembersOf(received)) back.emplace(key, &value);
    std::unordered_set<std::string_view> met(sent.size());
    for (const auto& [key, value] : MembersOf(sent)) {
      if (!met.insert(key).second) continue;
      const auto found = back.find(key);
      path_.Push(key);
      if (found == back.end()) {
        Drop(value);
      } else if (const std::optional<int> page =
                     IntIn(key == "Segment" ? FindMember(&received, "CurrentIndex") : nullptr);
                 page.has_value() && value.is_array() && found->second->is_array()) {
        const std::int64_t first = *page * kDeviceListPage;
        CompareElements(value, *found->second,
                        [first](std::size_t element) { return std::cmp_greater_equal(element, first); });
      } else {
        Compare(value, *found->second);
      }
      path_.Pop();
    }
    for (const auto& [key, value] : MembersOf(received)) {
      if (!met.contains(key)) Add(key, value);
    }
  }

  static Origin CameFrom(const Json& sent, const Json& received) {
    const auto isOfKind = [&](const Json& element) { return IsOneKind(element, received[0]); };
    const bool skipsOthers = !received.empty() && received.size() < sent.size() &&
                             std::cmp_equal(std::count_if(sent.begin(), sent.end(), isOfKind), received.size());
    if (!skipsOthers) return [](std::size_t) { return true; };
    return [&](std::size_t element) { return IsOneKind(sent[element], received[0]); };
  }

  void CompareElements(const Json& sent, const Json& received, const Origin& cameBack) {
    std::size_t next = 0;
    for (std::size_t element = 0; element < sent.size(); ++element) {
      path_.Push(element);
      if (next < received.size() && cameBack(element)) {
        Compare(sent[element], received[next++]);
      } else {
        Drop(sent[element]);
      }
      path_.Pop();
    }
    for (; next < received.size(); ++next) Add(next, received[next]);
  }

  void Drop(const Json& sent) { findings_.dropped.push_back({path_.Text(), &sent, nullptr}); }

  void Add(ContractPath::Step step, const Json& received) {
    path_.Push(step);
    auto& list = isDefault_(received, path_) ? findings_.added : findings_.addedOther;
    list.push_back({path_.Text(), nullptr, &received});
    path_.Pop();
  }

  Findings& findings_;
  const IsDefault& isDefault_;
  ContractPath path_;
};

void NoteDoubledKeys(const Json& object, ContractPath& path, std::vector<Finding>& doubled) {
  std::unordered_set<std::string_view> met(object.size()), noted;
  for (const auto& [key, value] : MembersOf(object)) {
    if (met.insert(key).second || !noted.insert(key).second) continue;
    path.Push(key);
    doubled.push_back({path.Text()});
    path.Pop();
  }
}

// A loop with a stack of its own: the contract can be nested deeper than the process's stack would bear.
std::vector<Finding> FindDoubledKeys(const Json& root) {
  struct Level {
    const Json* container;
    std::size_t next = 0;  // child
  };
  std::vector<Finding> doubled;
  std::vector<Level> levels;
  ContractPath path;
  const auto enter = [&](const Json& container) {
    if (container.is_object()) NoteDoubledKeys(container, path, doubled);
    levels.push_back({&container});
  };
  if (root.is_structured()) enter(root);
  while (!levels.empty()) {
    const Json& container = *levels.back().container;
    const std::size_t child = levels.back().next++;
    if (child == container.size()) {
      levels.pop_back();
      if (!levels.empty()) path.Pop();
      continue;
    }
    const auto* member = container.is_object() ? MembersOf(container).data() + child : nullptr;
    const Json& value = member != nullptr ? member->second : container[child];
    if (!value.is_structured()) continue;
    path.Push(member != nullptr ? ContractPath::Step(member->first) : child);
    enter(value);
  }
  return doubled;
}

}  // namespace

bool Findings::HasOnlyDefaults() const {
  return changed.empty() && dropped.empty() && addedOther.empty() && doubled.empty();
}

Findings CompareContracts(const Json& sent, const Json& received, const IsDefault& isDefault) {
  Findings findings;
  Comparison(findings, isDefault).Compare(sent, received);
  findings.doubled = FindDoubledKeys(sent);
  return findings;
}

}  // namespace host
