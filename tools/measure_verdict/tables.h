#pragma once

#include <string>

#include "tools/measure_verdict/survey.h"

namespace measure_verdict {

// The tables of docs/verdict.md, in Markdown.
std::string TablesOf(const Survey& survey);

}  // namespace measure_verdict
