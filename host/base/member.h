#pragma once

namespace host {

// A member of a record that goes into JSON, and its key there. A record lists its members in the order of its JSON:
//
//   static constexpr auto Members() { return std::tuple(Member("id", &Candidate::id), ...); }
//
// json.h reads and writes every such record.
template <class Record, class Value>
struct Member {
  const char* key;
  Value Record::*value;
};
template <class Record, class Value>
Member(const char*, Value Record::*) -> Member<Record, Value>;

}  // namespace host
