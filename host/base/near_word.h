#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

// The word that `word` most likely was meant to be: the one that the fewest changes of a letter make of it, where a third
// of the letters at most may change. Empty when none is that near. Letters A to Z and a to z are the same.
std::string NearestWord(std::string_view word, const std::vector<std::string>& words);

}  // namespace host
