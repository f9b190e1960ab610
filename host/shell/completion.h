#pragma once

#include <string>

namespace CLI {
class App;
}

namespace host {

enum class Shell { kBash, kZsh, kFish };

// The script that completes the command line that `app` describes, for the shell to read when it starts. Endpoints'
// names are asked of the program when they are needed.
std::string CompletionScript(const CLI::App& app, Shell shell);

}  // namespace host
