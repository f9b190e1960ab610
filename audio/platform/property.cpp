#include "audio/platform/platform.h"

namespace platform {

HRESULT ReleaseProperty(PROPVARIANT* value) {
  if (value == nullptr) return S_OK;
  switch (value->vt) {
    case VT_EMPTY:
      break;
    case VT_LPWSTR:
      CoTaskMemFree(value->pwszVal);
      break;
    case VT_BLOB:
      CoTaskMemFree(value->blob.pBlobData);
      break;
    default:
      return E_INVALIDARG;
  }
  PropVariantInit(value);
  return S_OK;
}

}  // namespace platform
