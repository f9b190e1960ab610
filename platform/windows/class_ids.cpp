// Gives the property keys and class ids that the system's headers only declare their one definition.
#include <initguid.h>
// The definitions follow from the inclusion above.
#include "platform/core_audio.h"
#include "platform/windows/observer_class.h"

namespace virtual_audio {

bool g_hasObserverClass = false;

}  // namespace virtual_audio

namespace core_audio {

const CLSID& ObserverEnumeratorClass() {
  return virtual_audio::g_hasObserverClass ? virtual_audio::kObserverClass : EnumeratorClass();
}

}  // namespace core_audio
