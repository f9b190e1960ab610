#include "json/record_table.h"

#include "json/objects.h"
#include "json/types.h"
#include "logging/model_logger.h"
#include "text/narrow.h"

namespace json {
namespace {

using logging::GetModelLogger;

void LogWrite(const WriteLine& line, const Field& field, const void* source) {
  if (line.id == kSilent) return;
  const auto text = [&] {
    switch (line.shows) {
      case WriteLine::Shows::kKey: return line.text + text::WideToNarrow(field.key);
      case WriteLine::Shows::kValue: return line.text + field.kind->print(source);
      case WriteLine::Shows::kTextOnly: break;
    }
    return std::string(line.text);
  };
  GetModelLogger().LogDebug2(line.id, text, 0.0);
}

}  // namespace

std::string ReadLine(const Field& field) {
  if (field.options.line != nullptr) return field.options.line;
  return field.kind->linePrefix + text::WideToNarrow(field.key) + field.kind->lineSuffix;
}

bool ReadRecord(const RecordTable& table, void* record, const Value* value) {
  if (value != nullptr && !value->IsObject()) return false;
  if (table.logsDeserializeEntry) {
    const char* name = table.readName != nullptr ? table.readName : table.name;
    GetModelLogger().LogDebug3(
        1, [&] { return std::string("Entering ") + name + "::Deserialize()"; }, 0.0);
  }
  if (value == nullptr) return false;

  std::array<const Value*, kMaxRows> found;
  FindMembers(
      *value, table.fields.size(), [&](std::size_t row) { return table.fields[row].key; }, found.data());
  bool stored = false;
  for (std::size_t row = 0; row < table.fields.size(); ++row) {
    const Field& field = table.fields[row];
    void* const target = field.member(record);
    const ReadResult result = field.kind->read({field, *value, found[row]}, target);
    stored = stored || result != ReadResult::kNothing;
    if (result != ReadResult::kStoredToLog || field.options.id == kSilent) continue;
    const auto text = [&] {
      return field.options.showsValue ? ReadLine(field) + field.kind->print(target) : ReadLine(field);
    };
    GetModelLogger().LogDebug2(field.options.id, text, 0.0);
  }
  return stored;
}

Serialized WriteRecord(const RecordTable& table, const void* record, Document* inComingDoc) {
  if (table.logsSerializeEntry) {
    GetModelLogger().LogDebug3(
        table.serializeEntryId, [&] { return std::string("Entering ") + table.name + "::Serialize()"; }, 0.0);
  }
  const std::size_t rows = table.writeOrder.empty() ? table.fields.size() : table.writeOrder.size();
  Serialized result = BeginObject(inComingDoc, table.newDocumentId, rows);
  Document& document = inComingDoc != nullptr ? *inComingDoc : *result.document;
  if (table.startLine.id != kSilent) GetModelLogger().LogDebug2(table.startLine.id, table.startLine.text, 0.0);

  for (std::size_t i = 0; i < rows; ++i) {
    const Field& field = table.fields[table.writeOrder.empty() ? i : table.writeOrder[i]];
    if (!field.options.written) continue;
    // The function that finds the member serves reading too, so it takes a record that isn't const. Writing changes
    // nothing.
    const void* const source = field.member(const_cast<void*>(record));
    LogWrite(field.options.beforeWrite, field, source);
    if (Value member; field.kind->write(field, source, document, member)) {
      AddMember(result.value, field.key, std::move(member), document);
    }
    LogWrite(field.options.afterWrite, field, source);
  }
  if (table.completeId != kSilent) {
    GetModelLogger().LogDebug2(
        table.completeId, [&] { return std::string("Serialize Complete:") + table.name; }, 0.0);
  }
  return result;
}

}  // namespace json
