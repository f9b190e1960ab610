#include <windows.h>

#include <atomic>
#include <system_error>

#include "host/base/interruption.h"
#include "host/base/system.h"

namespace host {
namespace {

std::atomic<HANDLE> g_event = nullptr;

BOOL WINAPI NoteRequest(DWORD kind) {
  if (const HANDLE event = g_event; event != nullptr) SetEvent(event);
  // Of a console that is closed, or a session that ends, the process lives as long as its handler, and no longer than
  // the system's patience. Its other threads put the settings back meanwhile.
  constexpr DWORD kPatience = 20000;
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) Sleep(kPatience);
  return TRUE;
}

HANDLE NewEvent() {
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (event == nullptr) {
    throw std::system_error(LastError(), "CreateEvent");
  }
  return event;
}

}  // namespace

Interruption::Interruption() : waitable_(reinterpret_cast<std::intptr_t>(NewEvent())) {
  g_event = reinterpret_cast<HANDLE>(waitable_);
  SetConsoleCtrlHandler(NoteRequest, TRUE);
}

Interruption::~Interruption() {
  SetConsoleCtrlHandler(NoteRequest, FALSE);
  g_event = nullptr;
  CloseHandle(reinterpret_cast<HANDLE>(waitable_));
}

bool Interruption::Requested() const {
  return WaitForSingleObject(reinterpret_cast<HANDLE>(waitable_), 0) == WAIT_OBJECT_0;
}

}  // namespace host
