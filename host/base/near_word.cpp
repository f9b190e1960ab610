#include "host/base/near_word.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "text/utf.h"

namespace host {
namespace {

// The edit distance by Wagner and Fischer ("The String-to-String Correction Problem", 1974), a row at a time.
std::size_t Distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string NearestWord(std::string_view word, const std::vector<std::string>& words) {
  const std::string meant = text::LowerAscii(word);
  std::string nearest;
  std::size_t least = std::max<std::size_t>(1, word.size() / 3) + 1;
  for (const std::string& candidate : words) {
    const std::size_t distance = Distance(meant, text::LowerAscii(candidate));
    if (distance >= least) continue;
    least = distance;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace host
