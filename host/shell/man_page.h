#pragma once

#include <string>

namespace CLI {
class App;
}

namespace host {

// The manual page of the command line that `app` describes, in the mdoc language (mdoc(7)).
std::string ManPage(const CLI::App& app);

}  // namespace host
