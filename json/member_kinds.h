// The kinds of members by type, and the function that makes a row.
#pragma once

#include <memory>
#include <vector>

#include "json/getters.h"
#include "json/objects.h"
#include "json/record_table.h"
#include "text/narrow.h"

namespace json {

// The result of a read function whose value the row's line reports.
inline ReadResult StoredToLogIf(bool stored) { return stored ? ReadResult::kStoredToLog : ReadResult::kNothing; }

// The JSON value of a text, number or flag, in the memory of `document`.
template <class Scalar>
Value ScalarValue(const Scalar& scalar, Document& document) {
  constexpr bool kIsNarrowInteger = std::is_integral_v<Scalar> && !std::is_same_v<Scalar, bool> && sizeof(Scalar) < 8;
  if constexpr (std::is_same_v<Scalar, std::u16string>) {
    return CopyText(scalar, document);
  } else if constexpr (!kIsNarrowInteger) {
    return Value(scalar);
  } else if constexpr (std::is_signed_v<Scalar>) {
    return Value(static_cast<int>(scalar));
  } else {
    return Value(static_cast<unsigned>(scalar));
  }
}

// A text, number or flag as log lines show it.
template <class Scalar>
std::string ScalarText(const Scalar& scalar) {
  if constexpr (std::is_same_v<Scalar, std::u16string>) {
    return text::WideToNarrow(scalar);
  } else if constexpr (std::is_same_v<Scalar, bool>) {
    return text::BoolToText(scalar);
  } else if constexpr (std::is_floating_point_v<Scalar>) {
    return text::DoubleToText(scalar);
  } else {
    return std::to_string(scalar);
  }
}

// Its name in docs/contract.md.
template <class Scalar>
constexpr const char* ScalarName() {
  if constexpr (std::is_same_v<Scalar, std::u16string>) {
    return "text";
  } else if constexpr (std::is_same_v<Scalar, bool>) {
    return "flag";
  } else if constexpr (std::is_floating_point_v<Scalar>) {
    return sizeof(Scalar) == 4 ? "float" : "double";
  } else if constexpr (std::is_signed_v<Scalar>) {
    return sizeof(Scalar) == 2 ? "int16" : sizeof(Scalar) == 4 ? "int32" : "int64";
  } else {
    return sizeof(Scalar) == 1 ? "uint8" : sizeof(Scalar) == 2 ? "uint16" : "uint32";
  }
}

// Logs the row's line, which for a nested record says that it is null.
void LogNullRecord(const Field& field);

// Log the lines of a list that is written: before it, before the record at `index`, and after it. Nothing if `lines`
// is null.
void LogListBegin(const ListLines* lines, std::size_t size);
void LogListItem(const ListLines* lines, std::size_t index);
void LogListEnd(const ListLines* lines);

// An empty object, which is read instead of a list element that is no object.
const Value& EmptyObject();

// The kind of members of type `Member`. The general case is a text, a number or a flag.
template <class Member>
struct KindOf {
  static ReadResult Read(const Reading& reading, void* target) {
    return StoredToLogIf(ReadScalar(reading.member, *static_cast<Member*>(target)));
  }
  static bool Write(const Field&, const void* source, Document& document, Value& out) {
    out = ScalarValue(*static_cast<const Member*>(source), document);
    return true;
  }
  static std::string Print(const void* source) { return ScalarText(*static_cast<const Member*>(source)); }

  static constexpr Kind kind = {.read = Read, .write = Write, .print = Print, .name = ScalarName<Member>()};
};

// A nested record, null until one is read. Each one that is read is a new record, so nothing of the one before remains.
template <class Record>
struct KindOf<std::unique_ptr<Record>> {
  using Pointer = std::unique_ptr<Record>;

  static ReadResult Read(const Reading& reading, void* target) {
    if (reading.member != nullptr && reading.member->IsNull()) LogNullRecord(reading.field);
    if (IsAbsentRecord(reading.member)) return ReadResult::kNothing;
    auto record = std::make_unique<Record>();
    record->Deserialize(reading.member);
    *static_cast<Pointer*>(target) = std::move(record);
    return ReadResult::kStored;
  }
  static bool Write(const Field&, const void* source, Document& document, Value& out) {
    const Pointer& record = *static_cast<const Pointer*>(source);
    if (record == nullptr) return false;
    out = std::move(record->Serialize(&document).value);
    return true;
  }

  static constexpr Kind kind = {.read = Read,
                                .write = Write,
                                .name = "record",
                                .record = Record::Table,
                                .linePrefix = "No ",
                                .lineSuffix = " to set."};
};

// A list of text or of numbers. Elements of another kind are skipped.
template <class Element>
struct ScalarListKind {
  using List = std::vector<Element>;
  static constexpr const char* kName = std::is_same_v<Element, std::u16string> ? "list of text" : "list of int32";

  static ReadResult Read(const Reading& reading, void* target) {
    if (reading.member == nullptr || !reading.member->IsArray()) return ReadResult::kNothing;
    List& list = *static_cast<List*>(target);
    list.clear();
    list.reserve(reading.member->Size());
    for (const Value& value : reading.member->GetArray()) {
      Element element{};
      if (ReadScalar(&value, element)) list.push_back(std::move(element));
    }
    return ReadResult::kStoredToLog;
  }
  static bool Write(const Field&, const void* source, Document& document, Value& out) {
    const List& list = *static_cast<const List*>(source);
    out.SetArray();
    out.Reserve(static_cast<rapidjson::SizeType>(list.size()), document.GetAllocator());
    for (const Element& element : list) {
      out.PushBack(ScalarValue(element, document), document.GetAllocator());
    }
    return true;
  }
  static std::string Print(const void* source) { return std::to_string(static_cast<const List*>(source)->size()); }

  static constexpr Kind kind = {
      .read = Read, .write = Write, .print = Print, .name = kName, .linePrefix = "Set ", .lineSuffix = " count:"};
};

template <>
struct KindOf<std::vector<std::u16string>> : ScalarListKind<std::u16string> {};
template <>
struct KindOf<std::vector<std::int32_t>> : ScalarListKind<std::int32_t> {};

// A list of records, held by value or by pointer. An element that is no object gives a record with its defaults.
template <class Element>
struct KindOf<std::vector<Element>> {
  using List = std::vector<Element>;

  template <class Record>
  static constexpr auto TableOf(Record*) {
    return Record::Table;
  }
  template <class Record>
  static constexpr auto TableOf(std::unique_ptr<Record>*) {
    return Record::Table;
  }

  static ReadResult Read(const Reading& reading, void* target) {
    if (reading.member == nullptr || !reading.member->IsArray()) return ReadResult::kNothing;
    List& list = *static_cast<List*>(target);
    if (!reading.field.options.appends) list.clear();
    list.reserve(list.size() + reading.member->Size());
    for (const Value& value : reading.member->GetArray()) {
      Element element = New(static_cast<Element*>(nullptr));
      RecordOf(element).Deserialize(value.IsObject() ? &value : &EmptyObject());
      list.push_back(std::move(element));
    }
    return ReadResult::kStoredToLog;
  }
  static bool Write(const Field& field, const void* source, Document& document, Value& out) {
    const List& list = *static_cast<const List*>(source);
    LogListBegin(field.options.list, list.size());
    out.SetArray();
    out.Reserve(static_cast<rapidjson::SizeType>(list.size()), document.GetAllocator());
    for (std::size_t i = 0; i < list.size(); ++i) {
      LogListItem(field.options.list, i);
      out.PushBack(RecordOf(list[i]).Serialize(&document).value, document.GetAllocator());
    }
    LogListEnd(field.options.list);
    return true;
  }
  static std::string Print(const void* source) { return std::to_string(static_cast<const List*>(source)->size()); }

  static constexpr Kind kind = {.read = Read,
                                .write = Write,
                                .print = Print,
                                .name = "list of records",
                                .record = TableOf(static_cast<Element*>(nullptr)),
                                .linePrefix = "Set ",
                                .lineSuffix = " count:"};

 private:
  template <class Record>
  static Record New(Record*) {
    return Record{};
  }
  template <class Record>
  static std::unique_ptr<Record> New(std::unique_ptr<Record>*) {
    return std::make_unique<Record>();
  }
  template <class Record>
  static Record& RecordOf(Record& record) {
    return record;
  }
  template <class Record>
  static Record& RecordOf(std::unique_ptr<Record>& record) {
    return *record;
  }
  template <class Record>
  static const Record& RecordOf(const std::unique_ptr<Record>& record) {
    return *record;
  }
};

template <class Class, class Type>
Type MemberType(Type Class::*);
template <class Class, class Type>
Class MemberClass(Type Class::*);

// The row for `member`, a pointer to a data member, with the kind of the member's type or the one that is given.
template <auto member, const Kind& kind = KindOf<decltype(MemberType(member))>::kind>
consteval Field row(std::u16string_view key, RowOptions options = {}) {
  using Class = decltype(MemberClass(member));
  return {key, [](void* record) -> void* { return &(static_cast<Class*>(record)->*member); }, &kind, options};
}

}  // namespace json
