#pragma once

#include "json/forward.h"

namespace json {

// Reads `value` into `record`, an object of the table's class, and returns whether any row stored a value. A null
// `value` is read as an object without keys. A value that is no object reads nothing and logs nothing.
bool ReadRecord(const RecordTable& table, void* record, const Value* value);

// Writes `record` as an object in the memory of `inComingDoc` or, if that is null, of a new document that the result
// owns.
Serialized WriteRecord(const RecordTable& table, const void* record, Document* inComingDoc);

// The base of a record that is read and written by its table, Class::Table(), and in no other way. It has no members.
template <class Class>
class Record {
 public:
  void Deserialize(const Value* value) { ReadRecord(Class::Table(), static_cast<Class*>(this), value); }
  // Defined in record_table.h, beside the type of what it gives.
  Serialized Serialize(Document* inComingDoc) const;
};

}  // namespace json
