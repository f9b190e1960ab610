#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "audiotests/zqrmt_return_codes.h"
#include "tests/support/module_file.h"
#include "tests/support/temp_directory.h"

// How a reply shows the return code.
inline std::string ReturnCode(int code) {
  return R"("ReturnCode":)" + std::to_string(code);
}

// One operation of the trace.
struct Operation {
  std::string name;
  std::string endpoint = {};   // empty for those of no endpoint
  std::string arguments = {};  // as JSON
  int status = 0;
  int channel = 0;  // of the operations that have them
  double level = 0.0;
  bool muted = false;
};

struct Volume {
  std::vector<double> levels;
  bool muted = false;

  friend bool operator==(const Volume&, const Volume&) = default;
};

// What the virtual machine tells of the calls so far.
struct MachineState {
  std::vector<Operation> trace;
  std::map<std::string, Volume> volumes;  // by endpoint id
  int liveObjects = 0;
};

// The module, loaded as a host loads it into this process, with an empty log directory. One at a time.
class ModuleUnderTest {
 public:
  // Loads the module when the log directory is as the test wants it: `prepareLog` gets its path. By default it is
  // there, empty.
  explicit ModuleUnderTest(void (*prepareLog)(const std::filesystem::path& log) = nullptr);
  ~ModuleUnderTest();

  // Puts this thread on a fresh virtual machine.
  void StartMachine(std::string_view description);
  static MachineState State();

  // Calls an export with UTF-8 text and gives the reply in UTF-8; "(null)" for a null pointer.
  std::string Play(std::string_view contract) { return Call("AudioPlaybackTest", contract); }
  std::string Record(std::string_view contract) { return Call("AudioRecordTest", contract); }
  std::string Call(const char* function, std::string_view contract);
  // The same for a text in 16-bit units, null for a null pointer.
  std::string CallWide(const char* function, const char16_t* contract);

  const std::filesystem::path& LogDirectory() const { return log_; }
  void SetFlag(const std::string& level);
  // The log's lines without their times.
  std::vector<std::string> LogLines() const;

 private:
  TempDirectory directory_;
  std::filesystem::path log_;
  std::optional<ModuleFile> module_;
};
