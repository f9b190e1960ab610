#include <fmt/core.h>

#include <cstdlib>

#include "host/base/failure.h"
#include "host/restoring/private_folder.h"
#include "text/utf.h"

namespace host {

std::filesystem::path StateFolder() {
  // What lies there only this user and administrators may write to.
  const wchar_t* const local = _wgetenv(L"LOCALAPPDATA");
  const std::filesystem::path folder = std::filesystem::path(local != nullptr ? local : L"") / L"rmthost";
  std::error_code error;
  if (local != nullptr && (std::filesystem::create_directories(folder, error) || !error)) return folder;
  throw Failure(ExitCode::kBroken, fmt::format("There can't be a folder '{}'.", text::Utf8FromPath(folder)),
                "Set LOCALAPPDATA to a folder that you can write to.");
}

std::filesystem::path SessionFolder() { return StateFolder(); }

}  // namespace host
