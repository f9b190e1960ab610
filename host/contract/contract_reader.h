#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/contract/parsed_contract.h"

namespace host {

// Builds the tree of a ParsedContract from the events of the JSON parser. The parser's own tree would drop doubled
// members, and look each key up among all those before it.
class ContractReader : public nlohmann::json_sax<Json> {
 public:
  // Reads all of `text`, which must outlive the reader. Whether it is JSON.
  bool Read(const std::string& text);

  // What was read.
  Json root;
  std::optional<JsonFault> fault;                          // there when the text isn't JSON
  std::size_t coreDataMembers = 0, deviceInfoMembers = 0;  // as in ParsedContract

  bool null() override { return Add(nullptr); }
  bool boolean(bool value) override { return Add(value); }
  bool number_integer(std::int64_t value) override;
  bool number_unsigned(std::uint64_t value) override { return Add(value); }
  bool number_float(double value, const std::string&) override { return Add(value); }
  bool string(std::string& value) override { return Add(std::move(value)); }
  bool binary(Json::binary_t&) override { return false; }
  bool start_object(std::size_t) override;
  bool key(std::string& name) override;
  bool end_object() override;
  bool start_array(std::size_t) override;
  bool end_array() override;
  bool parse_error(std::size_t position, const std::string& token, const nlohmann::detail::exception& error) override;

 private:
  // A container that isn't read to its end. An element of an array has an empty key.
  struct Open {
    std::string key;  // of the member that is read
    std::vector<std::pair<std::string, Json>> values;
  };

  bool Add(Json value);

  const std::string* text_ = nullptr;
  std::istream* stream_ = nullptr;
  std::vector<Open> open_;
};

}  // namespace host
