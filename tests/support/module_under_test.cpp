#include "tests/support/module_under_test.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <utf8.h>

#include <cstdlib>
#include <fstream>
#include <memory>

#include "audiotests/zqrmt_tests_audio.h"
#include "platform/audio_platform.h"

namespace {

std::string JsonText(const rapidjson::Value& value) {
  rapidjson::StringBuffer buffer;
  rapidjson::Writer writer(buffer);
  value.Accept(writer);
  return buffer.GetString();
}

Operation ReadOperation(const rapidjson::Value& entry) {
  Operation operation{.name = entry["operation"].GetString(), .status = entry["status"].GetInt()};
  if (entry.HasMember("endpoint")) operation.endpoint = entry["endpoint"].GetString();
  if (!entry.HasMember("arguments")) return operation;
  const rapidjson::Value& arguments = entry["arguments"];
  operation.arguments = JsonText(arguments);
  if (arguments.HasMember("channel")) operation.channel = arguments["channel"].GetInt();
  if (arguments.HasMember("level")) operation.level = arguments["level"].GetDouble();
  if (arguments.HasMember("muted")) operation.muted = arguments["muted"].IsTrue();
  return operation;
}

}  // namespace

ModuleUnderTest::ModuleUnderTest(void (*prepareLog)(const std::filesystem::path&))
    : log_(ModuleFile::LogDirectory(directory_.Path())) {
  if (prepareLog == nullptr) {
    std::filesystem::create_directory(log_);
  } else {
    prepareLog(log_);
  }
  module_.emplace(log_);
}

ModuleUnderTest::~ModuleUnderTest() { AudioPlatformUninitialize(); }

void ModuleUnderTest::StartMachine(std::string_view description) {
  const std::string file = directory_ / "machine.json";
  std::ofstream(file) << description;
  if (AudioPlatformInitialize(("virtual:" + file).c_str()) != 0) throw std::runtime_error(AudioPlatformError());
}

MachineState ModuleUnderTest::State() {
  const std::unique_ptr<char, decltype(&std::free)> text(AudioPlatformState(), std::free);
  rapidjson::Document state;
  state.Parse(text.get());
  MachineState result;
  result.liveObjects = state["liveObjects"].GetInt();
  for (const auto& endpoint : state["endpoints"].GetArray()) {
    Volume& volume = result.volumes[endpoint["id"].GetString()];
    volume.muted = endpoint["muted"].GetBool();
    for (const auto& level : endpoint["levels"].GetArray()) volume.levels.push_back(level.GetDouble());
  }
  for (const auto& entry : state["trace"].GetArray()) result.trace.push_back(ReadOperation(entry));
  return result;
}

std::string ModuleUnderTest::Call(const char* function, std::string_view contract) {
  return CallWide(function, utf8::utf8to16(std::string(contract)).c_str());
}

std::string ModuleUnderTest::CallWide(const char* function, const char16_t* contract) {
  const auto test = reinterpret_cast<ZQRMTTestFunction*>(module_->Export(function));
  // On Windows the host's wide character is wchar_t, which has 16 bits too.
  const std::unique_ptr<ZQRMTChar, decltype(&std::free)> reply(test(reinterpret_cast<const ZQRMTChar*>(contract)),
                                                               std::free);
  return reply == nullptr ? "(null)" : utf8::utf16to8(std::u16string(reinterpret_cast<char16_t*>(reply.get())));
}

void ModuleUnderTest::SetFlag(const std::string& level) { std::ofstream(log_ / (level + ".flg")); }

std::vector<std::string> ModuleUnderTest::LogLines() const {
  constexpr std::size_t kTimeLength = 26;
  std::vector<std::string> lines;
  std::ifstream file(log_ / "ZQRMLOG.LOG");
  for (std::string line; std::getline(file, line);) {
    lines.push_back(ModuleFile::AsciiLine(line.substr(std::min(kTimeLength, line.size()))));
  }
  return lines;
}
