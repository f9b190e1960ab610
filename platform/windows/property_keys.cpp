// Gives the property keys and class ids that the system's headers only declare their one definition.
#include <initguid.h>
// The definitions follow from the inclusion above.
#include "platform/core_audio.h"
