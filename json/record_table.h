// Records as tables: one row for each key, made at compile time from the member pointer and erased to one plain struct,
// so that one loop reads every record and one writes it.
//
//   constexpr json::Field kFields[] = {
//       json::row<&StateInfo::Progress>(JSON_STATE_PROGRESS, {.id = 8201}),   // logs "Set Progress:40"
//       ...
//   };
//   constexpr json::RecordTable kTable = json::Table({.name = "StateInfo", .fields = kFields, .completeId = 773});
//
// Reading is tolerant: a key that is missing, or whose value is of another kind, leaves its member as it was. Writing
// is complete: every key goes out, but for nested records that aren't there. All log lines go to the model logger; a
// line that the filter rejects costs no text.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "json/forward.h"

namespace json {

struct Field;

// Stands for the id of a line that isn't logged.
inline constexpr std::int32_t kSilent = -1;

// What a row's read function works with. `member` is the value under the row's key, null when the key is missing.
struct Reading {
  const Field& field;
  const Value& object;
  const Value* member;
};

// How members of one type are read, written and shown in the log. A record with a key that fits no kind gives that row
// a kind of its own.
struct Kind {
  // Reads into `target`. True when a value was stored that the row's line, if it has one, is to show.
  bool (*read)(const Reading& reading, void* target);
  // Writes `source` into `out`, in `document`'s memory. False: the key is left out.
  bool (*write)(const Field& field, const void* source, Document& document, Value& out);
  // The value as log lines show it; null in a kind whose rows have no such line.
  std::string (*print)(const void* source) = nullptr;
  // What docs/contract.md calls it, and the table of the records in it, null where it holds none.
  const char* name;
  const RecordTable& (*record)() = nullptr;
  // The words around the key in a row's line, where the row gives no line of its own: "Set K:".
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

// The lines around a list of records that is written: `before`, the number of records behind `count`, "Current Index:"
// and the index ahead of each record, and `after` unless it is null.
struct ListLines {
  const char* before;
  const char* count;
  const char* after;
};

struct RowOptions {
  std::int32_t id = kSilent;   // of the line that reading logs: the value stored, or that a nested record is null
  const char* line = nullptr;  // that line's text, where it isn't "Set K:", "Set K count:" or "No K to set."
  bool showsValue = true;      // whether the value follows the text
  bool written = true;         // false: the key is read and never goes out
  bool appends = false;        // a list keeps what it held before it was read
  const ListLines* list = nullptr;
  WriteLine beforeWrite = {};
  WriteLine afterWrite = {};
  const char* note = nullptr;  // for docs/contract.md: what a host's author would not expect
};

// One row: a key, the member that it stands for, and what is told of it.
struct Field {
  std::u16string_view key;
  void* (*member)(void* record);
  const Kind* kind;
  RowOptions options;
};

struct RecordTable {
  const char* name;               // X in the lines "Entering X::Deserialize()" and "Serialize Complete:X"
  std::span<const Field> fields;  // in the order of reading
  std::span<const std::uint8_t> writeOrder = {};  // rows in the order of the wire; empty: the order of reading
  const char* readName = nullptr;                 // stands for `name` in the line that begins reading
  bool logsDeserializeEntry = true;
  bool logsSerializeEntry = true;
  std::int32_t serializeEntryId = 0;
  std::int32_t newDocumentId = kSilent;  // of the line that no document was given
  WriteLine startLine = {};              // follows once the document is settled
  std::int32_t completeId = kSilent;     // of the line that ends writing
  const char* note = nullptr;            // for docs/contract.md
};

// More rows than any record has.
inline constexpr std::size_t kMaxRows = 192;

// The table, checked: too many rows, or a key that would go out twice, doesn't compile.
consteval RecordTable Table(RecordTable table) {
  if (table.fields.size() > kMaxRows) throw "more rows than kMaxRows";
  for (std::size_t i = 0; i < table.fields.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (table.fields[i].key == table.fields[j].key) throw "a key stands in two rows";
    }
  }
  return table;
}

// The rows of `fields` in the order of `keys`. A key that is unknown, doubled, never written or left out doesn't
// compile.
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

// Reads `record`, an object of the table's class. A null `value` is an object with no keys; a value that is no object
// reads nothing and logs nothing.
void ReadRecord(const RecordTable& table, void* record, const Value* value);

// Writes `record` as an object in the memory of `inComingDoc`, or, when that is null, of a new document that the result
// owns.
Serialized WriteRecord(const RecordTable& table, const void* record, Document* inComingDoc);

// The text of the row's line, without the value.
std::string ReadLine(const Field& field);

}  // namespace json
