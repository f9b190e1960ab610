/* A host: host AudioPlaybackTest|AudioRecordTest ID
 * runs the test on the endpoint with this id and prints the reply. */
#include <objbase.h>
#include <stdio.h>
#include <stdlib.h>

typedef wchar_t* Test(const wchar_t* contract);

int wmain(int count, wchar_t** arguments) {
  if (count != 3) return 2;
  char function[32];
  if (wcstombs(function, arguments[1], sizeof function) >= sizeof function) return 2;
  wchar_t contract[1024];
  const wchar_t* form = L"{\"CoreData\":{\"DeviceInfo\":{\"DeviceInstanceID\":\"%ls\",\"AudioData\":{}}}}";
  if (swprintf(contract, 1024, form, arguments[2]) < 0) return 2;

  if (FAILED(CoInitializeEx(NULL, COINIT_MULTITHREADED))) return 4;
  HMODULE module = LoadLibraryW(L"ZQRMTTestsAudio.dll");
  if (module == NULL) return 4;
  Test* test = (Test*)(void (*)(void))GetProcAddress(module, function);
  if (test == NULL) return 4;

  wchar_t* reply = test(contract); /* blocks until the test has ended */
  if (reply == NULL) return 4;
  printf("%ls\n", reply);
  free(reply); /* of msvcrt, as the module's memory is */
  FreeLibrary(module);
  CoUninitialize();
  return 0;
}
