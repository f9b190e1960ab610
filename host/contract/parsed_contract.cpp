#include "host/contract/parsed_contract.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "host/contract/contract_reader.h"

namespace host {

const Json* FindMember(const Json* object, std::string_view key) {
  if (object == nullptr || !object->is_object()) return nullptr;
  const auto& members = object->get_ref<const Json::object_t&>();
  const auto member =
      std::find_if(members.begin(), members.end(), [&](const auto& candidate) { return candidate.first == key; });
  return member == members.end() ? nullptr : &member->second;
}

Json* FindMember(Json* object, std::string_view key) {
  return const_cast<Json*>(FindMember(static_cast<const Json*>(object), key));
}

std::optional<int> IntIn(const Json* value) {
  if (value == nullptr || !value->is_number_integer()) return std::nullopt;
  // Exact for every number that can be in range.
  const auto number = value->get<double>();
  using Limits = std::numeric_limits<int>;
  if (number < Limits::min() || number > Limits::max()) return std::nullopt;
  return static_cast<int>(number);
}

ParsedContract::ParsedContract(std::string text) : text_(std::move(text)) {
  ContractReader reader;
  if (reader.Read(text_)) root_ = std::move(reader.root);
  fault_ = std::move(reader.fault);
  coreDataMembers_ = reader.coreDataMembers;
  deviceInfoMembers_ = reader.deviceInfoMembers;
}

const Json* ParsedContract::CoreData() const {
  const Json* core = FindMember(&root_, "CoreData");
  return core != nullptr && core->is_object() ? core : nullptr;
}

std::string ParsedContract::With(std::string_view member, std::size_t place) const {
  std::string text;
  text.reserve(text_.size() + member.size() + 1);
  return text.append(text_, 0, place).append(member).append(",").append(text_, place);
}

}  // namespace host
