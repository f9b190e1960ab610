#pragma once

#include <ctime>
#include <string>

namespace logging {

// The local time in the form of ctime without the line end, 24 characters: "Wed Nov 18 14:30:14 2026". It is English in
// every locale. Empty for a time that this form can't show.
std::string LocalTimeText(std::time_t time);

}  // namespace logging
