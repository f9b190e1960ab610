#include "host/base/start_self_windows.h"

#include <cstddef>
#include <vector>

#include "host/base/system.h"

namespace host {

std::optional<PROCESS_INFORMATION> StartSelf(const std::string& command, const StandardStreams& streams, DWORD flags) {
  STARTUPINFOEXW startup{};
  startup.StartupInfo.cb = sizeof startup;
  startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  startup.StartupInfo.hStdInput = streams.input;
  startup.StartupInfo.hStdOutput = streams.output;
  startup.StartupInfo.hStdError = streams.errors;
  std::vector<HANDLE> inherited;
  for (const HANDLE stream : {streams.input, streams.output, streams.errors}) {
    if (stream == nullptr) continue;
    SetHandleInformation(stream, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    inherited.push_back(stream);
  }

  SIZE_T size = 0;
  InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
  std::vector<std::byte> attributes(size);
  startup.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(attributes.data());
  if (!InitializeProcThreadAttributeList(startup.lpAttributeList, 1, 0, &size)) return std::nullopt;
  const std::wstring program = ProgramFile().wstring();
  std::wstring line = L"rmthost " + std::wstring(command.begin(), command.end());
  PROCESS_INFORMATION made{};
  const bool isStarted =
      UpdateProcThreadAttribute(startup.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited.data(),
                                inherited.size() * sizeof(HANDLE), nullptr, nullptr) != 0 &&
      CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, flags | EXTENDED_STARTUPINFO_PRESENT,
                     nullptr, nullptr, &startup.StartupInfo, &made) != 0;
  const DWORD error = GetLastError();
  DeleteProcThreadAttributeList(startup.lpAttributeList);
  SetLastError(error);
  return isStarted ? std::optional(made) : std::nullopt;
}

}  // namespace host
