#pragma once

#include "platform/core_audio.h"
#include "platform/endpoint_state.h"

namespace platform {

// IPropertyStore::GetValue for an endpoint's properties; a key that they don't have gives the empty value, as
// published. Throws std::bad_alloc.
HRESULT GetProperty(const EndpointState& endpoint, REFPROPERTYKEY key, PROPVARIANT* value);

// Releases what a property value holds and makes it empty. E_INVALIDARG, with nothing changed, for a kind of value that
// the property stores here don't hand out.
HRESULT ReleaseProperty(PROPVARIANT* value);

}  // namespace platform
