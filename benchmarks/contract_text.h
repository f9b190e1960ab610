#pragma once

#include <fstream>
#include <sstream>
#include <string>

// The largest golden contract, in UTF-8.
inline std::string ContractText() {
  std::ifstream file(ZQRMT_CONTRACT);
  std::ostringstream text;
  text << file.rdbuf();
  return std::move(text).str();
}
