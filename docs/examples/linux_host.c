/* A host: linux_host MODULE FUNCTION PLATFORM < contract.json
 * runs AudioPlaybackTest or AudioRecordTest of the module on an audio platform, "pulse" or "virtual", and prints the reply. */
#include <dlfcn.h>
#include <iconv.h>
#include <stdio.h>
#include <stdlib.h>

#include <audio_platform.h>
#include <zqrmt_tests_audio.h>

/* Converts `size` bytes. The result ends with a zero of four bytes; NULL if the text isn't valid. The caller frees it. */
static char* Convert(const char* to, const char* from, char* text, size_t size) {
  size_t room = 2 * size;
  char* result = calloc(room + 4, 1);
  char* end = result;
  iconv_t converter = iconv_open(to, from);
  if (result == NULL || converter == (iconv_t)-1 || iconv(converter, &text, &size, &end, &room) == (size_t)-1) return NULL;
  iconv_close(converter);
  return result;
}

int main(int count, char** arguments) {
  static char contract[65536];
  if (count != 4) return 2;
  size_t size = fread(contract, 1, sizeof contract, stdin);

  /* On the thread that will make the call. */
  if (AudioPlatformInitialize(arguments[3]) != 0) {
    fprintf(stderr, "%s\n", AudioPlatformError());
    return 4;
  }
  void* module = dlopen(arguments[1], RTLD_NOW);
  ZQRMTTestFunction* test = module == NULL ? NULL : (ZQRMTTestFunction*)dlsym(module, arguments[2]);
  if (test == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 4;
  }

  char* text = Convert("UTF-16LE", "UTF-8", contract, size); /* the byte order of this processor */
  ZQRMTChar* reply = text == NULL ? NULL : test((ZQRMTChar*)text); /* blocks until the test has ended */
  if (reply == NULL) return 4;
  size_t units = 0;
  while (reply[units] != 0) ++units;
  char* shown = Convert("UTF-8", "UTF-16LE", (char*)reply, units * sizeof *reply);
  if (shown != NULL) puts(shown);

  free(shown);
  free(reply); /* the module has made it, the host releases it */
  free(text);
  AudioPlatformUninitialize();
  return shown == NULL ? 4 : 0; /* the module may stay loaded to the end */
}
