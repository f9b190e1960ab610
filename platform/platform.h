#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "platform/core_audio.h"

namespace platform {

// Why a platform can't be had, in a sentence for the person who asked for it (UTF-8), and as a status: E_INVALIDARG for
// a description that can't be used, any other for a platform that isn't there.
class PlatformError : public std::runtime_error {
 public:
  explicit PlatformError(const std::string& sentence, HRESULT status = E_INVALIDARG)
      : std::runtime_error(sentence), status_(status) {}
  HRESULT Status() const { return status_; }

 private:
  HRESULT status_;
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

}  // namespace platform
