// Records as tables. A record has one row for each key, which is made at compile time from the pointer to the member.
// Rows are plain structs, so that one loop reads every record and one writes it.
//
//   constexpr json::Field kFields[] = {
//       json::row<&StateInfo::Progress>(JSON_STATE_PROGRESS, {.id = 8201}),   // logs "Set Progress:40"
//       ...
//   };
//   constexpr json::RecordTable kTable = json::Table({.name = "StateInfo", .fields = kFields, .completeId = 773});
//
// Reading is tolerant: a key that is missing, or whose value is of another kind, leaves its member as it was. Writing
// is complete: it writes every key but those of nested records that are null. All log lines go to the model logger. No
// text is made for a line that the level in force rejects.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "json/record.h"
#include "json/types.h"

namespace json {

struct Field;

// Stands for the id of a line that isn't logged.
inline constexpr std::int32_t kSilent = -1;

// What a row's read function works with: the row, the object that is read, and in it the value under the row's key,
// null if the key is missing.
struct Reading {
  const Field& field;
  const Value& object;
  const Value* member;
};

// What reading a row came to.
enum class ReadResult {
  kNothing,      // no value was stored
  kStored,       // a value was stored, and the row's line isn't about it
  kStoredToLog,  // a value was stored, which the row's line reports if the row has one
};

// How members of one type are read, written and shown in the log. A record with a key that fits no kind gives that row
// a kind of its own.
struct Kind {
  // Reads the row's value into `target`, the member.
  ReadResult (*read)(const Reading& reading, void* target);
  // Writes `source`, the member, into `out`, in the memory of `document`. Returns false if the key is to be left out.
  bool (*write)(const Field& field, const void* source, Document& document, Value& out);
  // The value as log lines show it. Null in a kind whose rows have no such line.
  std::string (*print)(const void* source) = nullptr;
  // Its name in docs/contract.md, and the table of the records that it holds, null if it holds none.
  const char* name;
  const RecordTable& (*record)() = nullptr;
  // The words around the key K in the line of a row that has no text of its own: "Set K:".
  const char* linePrefix = "Set ";
  const char* lineSuffix = ":";
};

// A line that writing logs beside a row, at debug2.
struct WriteLine {
  enum class Shows { kTextOnly, kKey, kValue };

  std::int32_t id = kSilent;
  const char* text = "";
  Shows shows = Shows::kTextOnly;
};

// The lines that writing logs for a list of records: `before`; `count` followed by the number of records; for each
// record "Current Index:" followed by its index; and `after` unless it is null.
struct ListLines {
  const char* before;
  const char* count;
  const char* after;
};

struct RowOptions {
  std::int32_t id = kSilent;   // of the line that reading logs: the stored value, or that a nested record is null
  const char* line = nullptr;  // the text of that line, if it isn't "Set K:", "Set K count:" or "No K to set."
  bool showsValue = true;      // whether the value follows the text
  bool written = true;         // false if the key is read but never written
  bool appends = false;        // whether reading a list keeps the elements that it has
  const ListLines* list = nullptr;
  WriteLine beforeWrite = {};
  WriteLine afterWrite = {};
  const char* note = nullptr;  // for docs/contract.md: what the author of a host would not expect
};

// One row: a key, the function that finds its member in a record, and how the member is read, written and logged.
struct Field {
  std::u16string_view key;
  void* (*member)(void* record);
  const Kind* kind;
  RowOptions options;
};

struct RecordTable {
  const char* name;               // X in the lines "Entering X::Deserialize()" and "Serialize Complete:X"
  std::span<const Field> fields;  // in the order of reading
  std::span<const std::uint8_t> writeOrder = {};  // rows in the order of writing; empty for the order of reading
  const char* readName = nullptr;                 // X in the first of these lines, if it isn't `name`
  bool logsDeserializeEntry = true;
  bool logsSerializeEntry = true;
  std::int32_t serializeEntryId = 0;
  std::int32_t newDocumentId = kSilent;  // of the line that says that no document was given
  WriteLine startLine = {};              // follows that line
  std::int32_t completeId = kSilent;     // of the line that ends the writing
  const char* note = nullptr;            // for docs/contract.md
};

// No record has more rows.
inline constexpr std::size_t kMaxRows = 192;

// Returns `table` after checking it: with too many rows or a key in two rows it doesn't compile.
consteval RecordTable Table(RecordTable table) {
  if (table.fields.size() > kMaxRows) throw "more rows than kMaxRows";
  for (std::size_t i = 0; i < table.fields.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (table.fields[i].key == table.fields[j].key) throw "a key stands in two rows";
    }
  }
  return table;
}

// The indexes of the rows of `fields` in the order of `keys`. It doesn't compile unless `keys` has each key that is
// written once, and no other.
template <const auto& fields, std::size_t count>
consteval std::array<std::uint8_t, count> WriteOrder(const std::u16string_view (&keys)[count]) {
  std::array<std::uint8_t, count> order{};
  std::size_t written = 0;
  for (const Field& field : fields) written += field.options.written ? 1 : 0;
  if (written != count) throw "not every written row stands in the order once";
  for (std::size_t i = 0; i < count; ++i) {
    std::size_t row = 0;
    while (row < std::size(fields) && fields[row].key != keys[i]) ++row;
    if (row == std::size(fields)) throw "a key of the order has no row";
    if (!fields[row].options.written) throw "a key of the order is never written";
    for (std::size_t j = 0; j < i; ++j) {
      if (order[j] == row) throw "a key stands in the order twice";
    }
    order[i] = static_cast<std::uint8_t>(row);
  }
  return order;
}

template <class Class>
Serialized Record<Class>::Serialize(Document* inComingDoc) const {
  return WriteRecord(Class::Table(), static_cast<const Class*>(this), inComingDoc);
}

// The text of the row's line, without the value.
std::string ReadLine(const Field& field);

}  // namespace json
