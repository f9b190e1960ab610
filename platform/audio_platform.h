/* The C interface of libaudioplatform: on which audio system the calling thread is.
 *
 * A host calls AudioPlatformInitialize on the thread on which it will call the test module, as a Windows host
 * initialises COM there. Not on Windows, where the system's own Core Audio serves.
 */
#ifndef AUDIO_PLATFORM_AUDIO_PLATFORM_H
#define AUDIO_PLATFORM_AUDIO_PLATFORM_H

#include <stdint.h>

#ifndef AUDIO_PLATFORM_EXPORT
#define AUDIO_PLATFORM_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Puts the calling thread on a fresh platform, in the place of the one it was on, if any. `description` is UTF-8:
 *   "virtual"       the built-in virtual machine, on the real clock;
 *   "virtual:FILE"  the virtual machine that the JSON text in FILE describes (docs/virtual-machine.md);
 *   "pulse"         the Linux sound server, PulseAudio or PipeWire, where libpulse looks for it (docs/sound-server.md);
 *   "pulse:SERVER"  the sound server that libpulse calls SERVER, for example "unix:/run/user/1000/pulse/native".
 * No sound server is started. Returns 0; or a negative status, with nothing changed and the reason in
 * AudioPlatformError: E_INVALIDARG (-2147024809) for a description that can't be used, any other for a platform that
 * isn't there, AUDCLNT_E_SERVICE_NOT_RUNNING (-2004287472) for a sound server that doesn't answer within 2 seconds. */
AUDIO_PLATFORM_EXPORT int32_t AudioPlatformInitialize(const char* description);

/* Takes the calling thread off its platform. Objects that are still referenced keep working until released. */
AUDIO_PLATFORM_EXPORT void AudioPlatformUninitialize(void);

/* The calling thread's platform as a UTF-8 JSON text (docs/virtual-machine.md, docs/sound-server.md): its endpoints as
 * they are now and, on the virtual machine, its live objects and the operations called so far. The caller releases the
 * text with free. A null pointer on a thread that is on no platform, or when there is no memory. */
AUDIO_PLATFORM_EXPORT char* AudioPlatformState(void);

/* Why the last AudioPlatformInitialize on this thread failed, as a UTF-8 sentence; empty if it didn't. The text stays
 * valid until the next call of AudioPlatformInitialize on this thread. */
AUDIO_PLATFORM_EXPORT const char* AudioPlatformError(void);

#ifdef __cplusplus
}
#endif

#endif
