#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "audio/platform/core_audio.h"

namespace platform {

// Why a platform can't be had, in a sentence for the person who asked for it. UTF-8.
class PlatformError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What stands behind the platform's functions on a thread. One exists per initialisation; the objects that it hands out
// may outlive it. The operations throw nothing.
class Platform {
 public:
  Platform() = default;
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;
  virtual ~Platform() = default;

  // CoCreateInstance, PropVariantClear and Sleep, as core_audio.h has them.
  virtual HRESULT CreateInstance(REFCLSID classId, IUnknown* outer, REFIID iid, void** object) = 0;
  virtual HRESULT ClearProperty(PROPVARIANT* value) = 0;
  virtual void Wait(DWORD milliseconds) = 0;

  // The text of AudioPlatformState. Throws std::bad_alloc.
  virtual std::string State() const = 0;
};

// Releases what a property value holds and makes it empty. E_INVALIDARG, with nothing changed, for a kind of value that
// the property stores here don't hand out.
HRESULT ReleaseProperty(PROPVARIANT* value);

}  // namespace platform
