/* The two functions of the test module ZQRMTTestsAudio, for a host that loads it at run time:
 *
 *   ZQRMTTestFunction* test = (ZQRMTTestFunction*)dlsym(module, "AudioRecordTest");
 *   ZQRMTChar* reply = test(contract);
 *   ...
 *   free(reply);
 *
 * A function takes a data contract, a JSON text in UTF-16 that ends with a zero unit, and runs its test on the audio
 * endpoints that the contract names. It blocks until the test has ended: about one second with a render endpoint, three
 * seconds where the record test only listens.
 *
 * A function returns a new text: the same contract with ReturnCode and ReturnMessage of CoreData filled in
 * (zqrmt_return_codes.h) and, from the record test, maxAmplitude of AudioData. The host releases it with free of the C
 * runtime that the module uses. It returns a null pointer if memory ran out or if the log directory could not be
 * examined or created.
 *
 * The host must
 * - have initialised COM on the calling thread (Windows), or have put the thread on a platform with
 *   AudioPlatformInitialize of audio_platform.h (elsewhere);
 * - make one call at a time: the functions are not re-entrant;
 * - keep the input text unchanged during the call. The module doesn't change or keep it. A null pointer counts as an
 *   empty text.
 */
#ifndef AUDIOTESTS_ZQRMT_TESTS_AUDIO_H
#define AUDIOTESTS_ZQRMT_TESTS_AUDIO_H

#ifdef _WIN32
#include <wchar.h>
typedef wchar_t ZQRMTChar;
#define ZQRMT_EXPORT __declspec(dllexport)
#else
#ifndef __cplusplus
#include <uchar.h>
#endif
typedef char16_t ZQRMTChar;
#define ZQRMT_EXPORT __attribute__((visibility("default")))
#endif

/* The type of both functions. */
typedef ZQRMTChar* ZQRMTTestFunction(const ZQRMTChar* contract);

#ifdef __cplusplus
extern "C" {
#endif

/* Plays one second of a tone between 900 and 1100 Hz on the render endpoint DeviceInstanceID of DeviceInfo. */
ZQRMT_EXPORT ZQRMTChar* AudioPlaybackTest(const ZQRMTChar* contract);

/* Captures from the endpoint DeviceInstanceID of DeviceInfo, while a tone of 1200 Hz plays on the endpoint targetDevice
 * of AudioData if that is given, and puts the largest absolute sample into maxAmplitude, full scale being 1.0. */
ZQRMT_EXPORT ZQRMTChar* AudioRecordTest(const ZQRMTChar* contract);

#ifdef __cplusplus
}
#endif

#endif
