#include "models/core/rmt_data_contract.h"

#include "json/access.h"
#include "json/member_kinds.h"
#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr std::size_t kStackCapacity = 1024;

constexpr json::Field kRMTDataContractFields[] = {json::row<&RMTDataContract::CoreData>(u"CoreData", {.id = 7501})};
constexpr json::RecordTable kRMTDataContractTable =
    json::Table({.name = "RMTDataContract", .fields = kRMTDataContractFields, .newDocumentId = 0, .completeId = 789});

}  // namespace

bool RMTDataContract::Deserialize(const std::u16string& text) {
  json::Document document;
  document.SetObject();
  // A text that isn't JSON leaves the root empty, which is then read like a contract without a core record.
  json::ParseText(text, document);
  return Deserialize(document);
}

bool RMTDataContract::Deserialize(const json::Value& value) {
  return json::ReadRecord(kRMTDataContractTable, this, &value);
}

json::Serialized RMTDataContract::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kRMTDataContractTable, this, inComingDoc);
}

const json::RecordTable& RMTDataContract::Table() { return kRMTDataContractTable; }

std::u16string RMTDataContract::Serialize() const {
  json::Document document(nullptr, kStackCapacity);
  return json::ValueToText(Serialize(&document).value);
}

}  // namespace ZQ_RMT_MODELS
