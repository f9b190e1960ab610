/* A module that does what the environment variable MISBEHAVIOUR says. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "audiotests/zqrmt_return_codes.h"

static char g_reply[100];

static void Crash(void) {
  void (*volatile nowhere)(void) = NULL;
  nowhere();
}

static void* Reply(void) {
  unsigned short* reply = malloc(sizeof g_reply * sizeof *reply);
  for (size_t i = 0; i < sizeof g_reply; ++i) reply[i] = (unsigned char)g_reply[i];
  return reply;
}

void* AudioPlaybackTest(const void* contract) {
  const char* behaviour = getenv("MISBEHAVIOUR");
  (void)contract;
  snprintf(g_reply, sizeof g_reply, "{\"CoreData\":{\"ReturnCode\":%d,\"ReturnMessage\":\"Audio Playback Test passed.\"}}",
           ZQRMT_RETURN_PLAYBACK_PASSED);
  if (behaviour == NULL) return NULL; /* as the real one when it is out of memory */
  if (strcmp(behaviour, "crash") == 0) Crash();
  if (strcmp(behaviour, "crash at the end") == 0) atexit(Crash);
  if (strcmp(behaviour, "exit") == 0) exit(0);
  if (strcmp(behaviour, "chatter") == 0) puts(g_reply);
  if (strcmp(behaviour, "nonsense") == 0) return calloc(1, sizeof(short));
  for (volatile int forever = strcmp(behaviour, "hang") == 0; forever;) {
  }
  return Reply();
}

void* AudioRecordTest(const void* contract) {
  return AudioPlaybackTest(contract);
}
