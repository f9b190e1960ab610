#include "host/commands/plot_file.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>

#include "host/base/failure.h"
#include "text/utf.h"

namespace host {

void WritePlot(const std::string& file, const std::string& drawing) {
  const std::filesystem::path path = text::PathFromUtf8(file);
  const std::filesystem::path part = text::PathFromUtf8(file + ".part");
  std::ofstream stream(part, std::ios::binary);
  stream << drawing;
  stream.close();
  std::error_code error;
  if (stream) std::filesystem::rename(part, path, error);
  if (stream && !error) return;
  std::filesystem::remove(part, error);
  throw Failure(ExitCode::kBroken, fmt::format("The plot can't be written to '{}'.", file),
                "Give --plot a file in a folder that is there and can be written to.");
}

}  // namespace host
