// Writes docs/contract.md from the tables of the records themselves (tools/update-golden).

#include <array>
#include <iostream>
#include <set>
#include <string>

#include "json/access.h"
#include "json/member_kinds.h"
#include "models/core/rmt_data_contract.h"
#include "models/devices/nvme_health_info_log.h"
#include "models/devices/nvme_identify_controller_data.h"

namespace {

using ZQ_RMT_MODELS::ImageField;
using ZQ_RMT_MODELS::RMTDataContract;

std::string Narrow(std::u16string_view text) { return text::WideToNarrow(text); }

bool IsList(const json::Field& field) { return std::string(field.kind->name).starts_with("list"); }

// An object in which every record of the table's tree is there, as an empty object: its reply shows all defaults.
json::Value EmptyRecords(const json::RecordTable& table, json::Document& document) {
  json::Value object(rapidjson::kObjectType);
  for (const json::Field& field : table.fields) {
    if (field.kind->record == nullptr) continue;
    json::Value record = EmptyRecords(field.kind->record(), document);
    if (IsList(field)) {
      json::Value list(rapidjson::kArrayType);
      list.PushBack(record, document.GetAllocator());
      record = std::move(list);
    }
    json::AddMember(object, field.key, std::move(record), document);
  }
  return object;
}

std::string Log(std::int32_t id, const std::string& line) {
  return id == json::kSilent ? "" : std::to_string(id) + " `" + line + "`";
}

// What happens to the key on its way out, and the row's own note.
std::string Notes(bool written, const char* note) {
  std::string text = written ? "" : "**read and never written**";
  if (note != nullptr) text += (text.empty() ? "" : "; ") + std::string(note);
  return text;
}

void PrintRow(const std::array<std::string, 5>& cells) {
  for (const std::string& cell : cells) std::cout << "| " << cell << (cell.empty() ? "" : " ");
  std::cout << "|\n";
}

class Reference {
 public:
  Reference() {
    json::Document document;
    json::Value root = EmptyRecords(RMTDataContract::Table(), document);
    RMTDataContract contract;
    contract.Deserialize(root);
    json::ParseText(contract.Serialize(), defaults_);
  }

  void Print() {
    PrintTable(RMTDataContract::Table(), "", &defaults_);
    PrintImage("NVME_HEALTH_INFO_LOG_STRUCT", "nvmeHealthLog", ZQ_RMT_MODELS::NVME_HEALTH_INFO_LOG_STRUCT::Fields());
    PrintImage("NVME_IDENTIFY_CONTROLLER_DATA_STRUCT", "nvmeIdentifyBuff",
               ZQ_RMT_MODELS::NVME_IDENTIFY_CONTROLLER_DATA_STRUCT::Fields());
  }

 private:
  // `defaults` is a record of this table with its defaults, null where it doesn't go out.
  void PrintTable(const json::RecordTable& table, const std::string& path, const json::Value* defaults) {
    if (!printed_.insert(&table).second) return;
    std::cout << "\n## " << table.name << "\n\n`" << (path.empty() ? "/" : path) << "`\n\n";
    if (table.note != nullptr) std::cout << table.note << "\n\n";
    PrintRow({"Key", "Kind", "Default", "Log", "Notes"});
    PrintRow({"---", "---", "---", "---", "---"});
    for (const json::Field& field : table.fields) PrintField(field, Member(defaults, field));
    if (!table.writeOrder.empty()) {
      std::cout << "\nGoes out in the order";
      const char* separator = " ";
      for (const std::uint8_t row : table.writeOrder) {
        std::cout << separator << '`' << Narrow(table.fields[row].key) << '`';
        separator = ", ";
      }
      std::cout << ".\n";
    }
    for (const json::Field& field : table.fields) {
      if (field.kind->record == nullptr) continue;
      const json::Value* record = Member(defaults, field);
      if (record != nullptr && record->IsArray()) record = record->Empty() ? nullptr : &(*record)[0];
      PrintTable(field.kind->record(), path + "/" + Narrow(field.key) + (IsList(field) ? "/0" : ""), record);
    }
  }

  static const json::Value* Member(const json::Value* defaults, const json::Field& field) {
    return defaults == nullptr ? nullptr : json::FindMember(*defaults, field.key);
  }

  static void PrintField(const json::Field& field, const json::Value* value) {
    std::string shown;
    if (value != nullptr && !value->IsObject() && field.options.written) {
      shown = IsList(field) ? "`[]`" : "`" + Narrow(json::ValueToText(*value)) + "`";
    }
    PrintRow({"`" + Narrow(field.key) + "`", field.kind->name, shown, Log(field.options.id, json::ReadLine(field)),
              Notes(field.options.written, field.options.note)});
  }

  static void PrintImage(const char* name, const char* key, std::span<const ImageField> fields) {
    std::cout
        << "\n## " << name << "\n\n`/CoreData/DeviceInfo/StorageData/di/" << key
        << "`\n\nA byte image of the structure that the NVM Express Base Specification, revision 1.4, publishes: "
           "each key is a field or a\nbit-field of it, 0 unless set. A number keeps as many low bits as its field "
           "has; an array is read only when it has exactly\nas many elements.\n\n";
    PrintRow({"Key", "Kind", "Byte", "Log", "Notes"});
    PrintRow({"---", "---", "---", "---", "---"});
    for (const ImageField& field : fields) {
      PrintRow(
          {"`" + Narrow(field.key) + "`", KindOf(field), std::to_string(field.firstBit / 8),
           Log(field.options.id, field.options.line != nullptr ? field.options.line : "Set " + Narrow(field.key) + ":"),
           NotesOf(field)});
    }
  }

  static std::string KindOf(const ImageField& field) {
    const std::string first = std::to_string(field.firstBit % 8);
    if (field.isArray) return std::to_string(field.bitCount / 8) + " bytes";
    if (field.bitCount % 8 == 0 && field.firstBit % 8 == 0) return "uint" + std::to_string(field.bitCount);
    if (field.bitCount == 1) return "bit " + first;
    return std::to_string(field.bitCount) + " bits from bit " + first;
  }

  static std::string NotesOf(const ImageField& field) {
    const char* note = field.options.repeatsKey      ? "the second use of the key"
                       : field.options.writtenSigned ? "comes back as a signed number"
                                                     : nullptr;
    return Notes(field.options.written, note);
  }

  json::Document defaults_;
  std::set<const json::RecordTable*> printed_;
};

}  // namespace

int main() {
  std::cout << R"(# The data contract

Written by `tools/contract_reference.cpp` from the tables that read and write the records; don't edit it.

A host's text is one JSON object with the key `CoreData`. Reading is tolerant: a key that is missing, unknown, or whose value is
of another kind than its row says changes nothing. Writing is complete: every key goes out with its default, in the order of
its table, but for a nested record that the host didn't send. A nested record that is null is logged and otherwise as if it
were missing; one that is no object is as if it were missing.

- `text` is a JSON string, read up to its first zero unit. `flag` is true or false.
- An integer has no fraction and no exponent. `int32` and `uint32` must fit; the narrower kinds store the low bits of an
  `int32` or `uint32`. A `double` must be written with a fraction or an exponent, and so must a `float`, which stores the nearest
  32-bit value.
- A double with more than 15 digits can move by a unit in its last place each time it is read.
- Elements of another kind are skipped in lists of text and of `int32`; in lists of records they give a record of defaults.
- A key that an object holds twice counts with its first value.
- Log gives the id and the text of the line that reading the key logs with `debug3.flg` present; the value follows the text. For
  a nested record it is the line that says it is null.
)";
  Reference().Print();
}
