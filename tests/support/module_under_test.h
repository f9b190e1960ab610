#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "audiotests/zqrmt_return_codes.h"
#include "tests/support/module_file.h"
#include "tests/support/temp_directory.h"

// The return code as it stands in a reply.
inline std::string ReturnCode(int code) { return R"("ReturnCode":)" + std::to_string(code); }

// An operation of the virtual machine's trace.
struct Operation {
  std::string name;
  std::string endpoint = {};   // empty if the operation belongs to none
  std::string arguments = {};  // as JSON
  int status = 0;
  // The arguments that some operations have.
  int channel = 0;
  double level = 0.0;
  bool muted = false;
};

struct Volume {
  std::vector<double> levels;
  bool muted = false;

  friend bool operator==(const Volume&, const Volume&) = default;
};

// The state of the virtual machine.
struct MachineState {
  std::vector<Operation> trace;
  std::map<std::string, Volume> volumes;  // by endpoint id
  int liveObjects = 0;
};

// The module, loaded into this process as a host loads it. One object at a time.
class ModuleUnderTest {
 public:
  // Prepares the log directory and loads the module. `prepareLog` gets the path of the directory, which isn't there
  // yet. Without it the directory is created empty.
  explicit ModuleUnderTest(void (*prepareLog)(const std::filesystem::path& log) = nullptr);
  ~ModuleUnderTest();

  // Puts this thread on a fresh virtual machine.
  void StartMachine(std::string_view description);
  static MachineState State();

  // Calls an exported function with a text in UTF-8. Returns the reply in UTF-8, "(null)" for a null pointer.
  std::string Play(std::string_view contract) { return Call("AudioPlaybackTest", contract); }
  std::string Record(std::string_view contract) { return Call("AudioRecordTest", contract); }
  std::string Call(const char* function, std::string_view contract);
  // The same for a text in UTF-16, or for a null pointer.
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
