#include "models/devices/registry_access_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

// Pairs that are read are added to those that the record has.
json::ReadResult ReadPairs(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || !reading.member->IsArray()) return json::ReadResult::kNothing;
  json::InsertPairs(*reading.member, *static_cast<json::TextMap*>(target));
  return json::ReadResult::kStored;
}

bool WritePairs(const json::Field&, const void* source, json::Document& document, json::Value& out) {
  out = json::PairsValue(*static_cast<const json::TextMap*>(source), document);
  return true;
}

constexpr json::Kind kPairs = {.read = ReadPairs, .write = WritePairs, .name = "list of pairs"};

constexpr json::Field kRegistryAccessDataFields[] = {
    json::row<&RegistryAccessData::PathName>(u"PathName", {.id = 7002, .line = "Set JSON_REGACCESS_PATHNAME:"}),
    json::row<&RegistryAccessData::RegistryData, kPairs>(
        u"RegistryData", {.note = "an array of objects of one member each, the name and its text; comes back sorted by "
                                  "name, the first of two like names"}),
};
// Log readers look for the word INCOMPLETE.
constexpr json::RecordTable kRegistryAccessDataTable = json::Table(
    {.name = "RegistryAccessData", .fields = kRegistryAccessDataFields, .readName = "INCOMPLETE RegistryAccessData"});

}  // namespace

const json::RecordTable& RegistryAccessData::Table() { return kRegistryAccessDataTable; }

}  // namespace ZQ_RMT_MODELS
