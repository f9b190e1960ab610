#pragma once

namespace host {

// A member of a record that goes into JSON, and its key there. A record lists its members in the order of its JSON:
//
//   static constexpr auto Members() { return std::tuple(Member("id", &Candidate::id), ...); }
//
// json.h reads and writes every such record.
template <class Record, class Value>
struct Member {
  constexpr Member(const char* name, Value Record::*pointer) : key(name), value(pointer) {}

  const char* key;
  Value Record::*value;
};

}  // namespace host
